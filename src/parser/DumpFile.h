#pragma once

#include <string>

#include <zoncore/UString.h>

namespace zonstoryparser {

/// Removes the file at `path`, if there is one, and writes a new one of these bytes. A file that cannot be made is
/// skipped without a word.
///
/// The names are predictable and the directory is everyone's, so a file is only ever made anew: what another user has
/// planted at the path (a link, a pipe, a file of theirs) is never written through.
void ReplaceDumpFile(const zoncore::UString& path, const std::string& bytes);

} // namespace zonstoryparser
