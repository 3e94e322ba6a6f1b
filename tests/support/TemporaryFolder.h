#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace support {

/// A folder of the test's own, removed with all in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "zonstoryparser-test-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) {
            throw std::runtime_error("cannot make a temporary folder");
        }
        mPath = pattern;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }

    const std::filesystem::path& Path() const { return mPath; }
    std::filesystem::path operator/(const std::string& name) const { return mPath / name; }

private:
    std::filesystem::path mPath;
};

/// A folder that takes the place of the system's temporary one, so that dumps go there.
class DumpFolder : public TemporaryFolder {
public:
    DumpFolder() { ::setenv("TMPDIR", Path().c_str(), 1); }
    ~DumpFolder() { ::unsetenv("TMPDIR"); }
};

inline std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path.string());
    }
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// Makes the folders above that are not there.
inline void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

/// What a folder holds, sorted, hidden things too.
inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace support
