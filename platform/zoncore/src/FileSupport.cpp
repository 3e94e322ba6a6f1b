#include <zoncore/FileSupport.h>

#include <cstdlib>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace zoncore {

Dir Dir::TempDir() {
    const char* const chosen = std::getenv("TMPDIR");
    return Dir(chosen != nullptr && *chosen != '\0' ? UTF8to16(chosen) : u"/tmp");
}

Dir::Dir(const Dir& parent, const UString& child)
    : Dir(parent.mPath.back() == u'/' ? parent.mPath + child : parent.mPath + u'/' + child) {}

Dir::Dir(UString path) : mPath(std::move(path)) {
    while (mPath.size() > 1 && mPath.back() == u'/') {
        mPath.pop_back();
    }
}

UString Dir::FullPath() const {
    return mPath;
}

File::File(const UString& path) : mPath(UTF16to8(path)) {}

bool File::Exists() const {
    struct stat status {};
    return ::lstat(mPath.c_str(), &status) == 0;
}

bool File::Delete() {
    return ::unlink(mPath.c_str()) == 0;
}

} // namespace zoncore
