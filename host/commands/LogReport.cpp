#include "commands/LogReport.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "commands/RowMatching.h"

namespace zonstory {

namespace {

std::string_view Name(CellState state) {
    switch (state) {
    case CellState::Filled:
        return "filled";
    case CellState::Replaced:
        return "replaced";
    case CellState::Kept:
        return "kept";
    case CellState::Unwritable:
        break;
    }
    return "unwritable";
}

constexpr std::string_view kUnsure = "unsure";

bool WasDone(CellState state) {
    return state == CellState::Filled || state == CellState::Replaced;
}

// Enough to know a text by.
std::string Beginning(const std::optional<std::string>& text) {
    constexpr std::size_t kMost = 48; // UTF-16 units
    const zoncore::UString units = zoncore::UTF8to16(text.value_or(""));
    if (units.size() <= kMost) {
        return text.value_or("");
    }
    const bool isHalf = units[kMost - 1] >= 0xD800 && units[kMost - 1] < 0xDC00;
    return zoncore::UTF16to8(units.substr(0, isHalf ? kMost - 1 : kMost)) + "…";
}

} // namespace

template <>
const Fields<LogEntry>& FieldsOf<LogEntry>() {
    static const Fields<LogEntry> fields = {{"file", nullptr, &LogEntry::file},
                                            {"line", nullptr, &LogEntry::line},
                                            {"clip", nullptr, &LogEntry::clip},
                                            {"scene", nullptr, &LogEntry::scene},
                                            {"confidence", nullptr, &LogEntry::confidence},
                                            {"state", nullptr, &LogEntry::state},
                                            {"column", nullptr, &LogEntry::column},
                                            {"old", nullptr, &LogEntry::old},
                                            {"value", nullptr, &LogEntry::value},
                                            {"reason", nullptr, &LogEntry::reason}};
    return fields;
}

template <>
const Fields<LogSummary>& FieldsOf<LogSummary>() {
    static const Fields<LogSummary> fields = {{"file", nullptr, &LogSummary::file},
                                              {"target", nullptr, &LogSummary::target},
                                              {"rows", nullptr, &LogSummary::rows},
                                              {"filled", nullptr, &LogSummary::filled},
                                              {"replaced", nullptr, &LogSummary::replaced},
                                              {"kept", nullptr, &LogSummary::kept},
                                              {"unwritable", nullptr, &LogSummary::unwritable},
                                              {"unsure", nullptr, &LogSummary::unsure}};
    return fields;
}

template <>
const Fields<LogDocument>& FieldsOf<LogDocument>() {
    static const Fields<LogDocument> fields = {{"files", nullptr, &LogDocument::files},
                                               {"entries", nullptr, &LogDocument::entries}};
    return fields;
}

LogSummary Summarize(const LogFile& log, const std::vector<Decision>& decisions, const Filling& filling) {
    const auto count = [&](CellState state) {
        return static_cast<std::size_t>(std::count_if(filling.cells.begin(), filling.cells.end(),
                                                      [state](const CellChange& cell) { return cell.state == state; }));
    };
    const auto unsure = std::count_if(decisions.begin(), decisions.end(),
                                      [](const Decision& decision) { return !decision.scene.has_value(); });
    return {log.Path(),
            std::nullopt,
            decisions.size(),
            count(CellState::Filled),
            count(CellState::Replaced),
            count(CellState::Kept),
            count(CellState::Unwritable),
            static_cast<std::size_t>(unsure)};
}

void AddEntries(const LogFile& log, const std::vector<Decision>& decisions, const Filling& filling,
                const std::vector<LogFill>& fills, const SceneNumbers& story, Told told,
                std::vector<LogEntry>& entries) {
    const ClipLog& rows = log.Rows();
    const std::vector<std::string> columns = log.ColumnNames(fills);
    auto cell = filling.cells.begin(); // in the order of the rows
    for (std::size_t row = 0; row < decisions.size(); ++row) {
        LogEntry entry;
        entry.file = log.Path();
        entry.line = rows.rows[row].line;
        entry.clip = ClipOfRow(rows, rows.rows[row]);
        if (!decisions[row].scene) {
            entry.state = kUnsure;
            entry.reason = decisions[row].reason;
            entries.push_back(entry);
            continue;
        }
        entry.scene = SceneLabel(*decisions[row].scene, story);
        entry.confidence = Name(decisions[row].evidence ? decisions[row].evidence->confidence : Confidence::None);
        for (; cell != filling.cells.end() && cell->row == row; ++cell) {
            if (told == Told::WhatStayed && WasDone(cell->state)) {
                continue;
            }
            entry.state = Name(cell->state);
            entry.column = columns[cell->column];
            entry.old = cell->old;
            entry.value = cell->value;
            entries.push_back(entry);
        }
    }
}

std::string AsLine(const LogSummary& log) {
    std::string line = fmt::format("{}: {} {}", log.file, log.rows, log.rows == 1 ? "row" : "rows");
    line += log.unsure > 0 ? fmt::format(", {} unsure", log.unsure) : "";
    line += fmt::format("; {} {} filled", log.filled, log.filled == 1 ? "cell" : "cells");
    for (const auto& [count, word] :
         {std::pair(log.replaced, "replaced"), {log.kept, "kept"}, {log.unwritable, "not writable"}}) {
        line += count > 0 ? fmt::format(", {} {}", count, word) : "";
    }
    return log.target ? line + " -> " + *log.target : line;
}

std::string AsText(const LogDocument& document) {
    Table table({{"where", "where"},
                 {"clip", "clip"},
                 {"scene", "scene"},
                 {"state", "state"},
                 {"column", "column"},
                 {"old", "is"},
                 {"value", "would be"}});
    for (const LogEntry& entry : document.entries) {
        table.AddRow({fmt::format("{}:{}", entry.file, entry.line), entry.clip, entry.scene.value_or("?"), entry.state,
                      entry.column.value_or(""), Beginning(entry.old),
                      entry.reason ? *entry.reason : Beginning(entry.value)});
    }
    return document.entries.empty() ? std::string() : table.AsText();
}

} // namespace zonstory
