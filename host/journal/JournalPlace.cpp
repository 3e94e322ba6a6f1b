#include "journal/JournalPlace.h"

#include <algorithm>
#include <cstdlib>

namespace zonstory {

namespace fs = std::filesystem;

namespace {

// A variable that holds an absolute path, as the ones for folders have to.
fs::path FolderIn(const char* variable) {
    const char* const value = std::getenv(variable);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

} // namespace

JournalPlace OwnJournal() {
    const fs::path state = FolderIn("XDG_STATE_HOME");
    const fs::path home = FolderIn("HOME");
    if (state.empty() && home.empty()) {
        throw JournalError("there is no place for a journal, since HOME is not set; --journal names one");
    }
    return {(state.empty() ? home / ".local" / "state" : state) / "zonstory", true, true};
}

JournalPlace JournalNamed(const std::string& name) {
    if (name.empty()) {
        return OwnJournal();
    }
    JournalPlace place{name, false, false};
    std::error_code ignored;
    place.isFolder = fs::is_directory(place.path, ignored);
    try {
        place.isOwn = IsBeneath(place.path, OwnJournal().path);
    } catch (const JournalError&) { // without a home nothing is one's own
    }
    return place;
}

bool IsBeneath(const fs::path& file, const fs::path& folder) {
    std::error_code error;
    const fs::path whole = fs::weakly_canonical(fs::absolute(file), error);
    const fs::path above = error ? fs::path() : fs::weakly_canonical(fs::absolute(folder), error);
    return !error && std::mismatch(above.begin(), above.end(), whole.begin(), whole.end()).first == above.end();
}

} // namespace zonstory
