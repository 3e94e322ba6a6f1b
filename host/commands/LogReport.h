#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "commands/LogFile.h"
#include "match/Decision.h"
#include "output/Record.h"

namespace zonstory {

/// A cell that was filled or could not be, or a row that no scene was found for.
struct LogEntry {
    std::string file;
    std::size_t line = 0;
    std::string clip;
    std::string state; ///< "filled", "replaced", "kept", "unwritable" or "unsure": they do not change.
    std::optional<std::string> scene;
    std::optional<std::string> confidence; ///< How sure the scene is.
    std::optional<std::string> column;
    std::optional<std::string> old;
    std::optional<std::string> value;
    std::optional<std::string> reason;
};

/// What became of a log.
struct LogSummary {
    std::string file;
    std::optional<std::string> target; ///< None when nothing was written.
    std::size_t rows = 0;
    std::size_t filled = 0;
    std::size_t replaced = 0;
    std::size_t kept = 0;
    std::size_t unwritable = 0;
    std::size_t unsure = 0;
};

/// What became of all of them.
struct LogDocument {
    std::vector<LogSummary> files;
    std::vector<LogEntry> entries;
};

/// @param decisions  One for each row of the log.
LogSummary Summarize(const LogFile& log, const std::vector<Decision>& decisions, const Filling& filling);

/// Which cells are told of beside the rows without a scene.
enum class Told { Everything, WhatStayed };

void AddEntries(const LogFile& log, const std::vector<Decision>& decisions, const Filling& filling,
                const std::vector<LogFill>& fills, const SceneNumbers& story, Told told,
                std::vector<LogEntry>& entries);

/// "day3.ale: 41 rows, 1 unsure; 280 cells filled, 2 kept -> out/day3.ale"
std::string AsLine(const LogSummary& log);

/// A table of the entries, of long texts the beginning; empty without any.
std::string AsText(const LogDocument& document);

template <>
const Fields<LogEntry>& FieldsOf<LogEntry>();
template <>
const Fields<LogSummary>& FieldsOf<LogSummary>();
template <>
const Fields<LogDocument>& FieldsOf<LogDocument>();

} // namespace zonstory
