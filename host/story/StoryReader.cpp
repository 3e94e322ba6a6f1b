#include "story/StoryReader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "story/StoryDriver.h"

namespace zonstory {

namespace {

constexpr char kStandardInput[] = "-";

class Descriptor {
public:
    explicit Descriptor(const std::string& path)
        : mIsOurs(path != kStandardInput),
          mNumber(mIsOurs ? open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY) : STDIN_FILENO) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (mIsOurs && mNumber >= 0) {
            close(mNumber);
        }
    }

    bool IsOpen() const { return mNumber >= 0; }

    /// @return The number of bytes read, 0 at the end, -1 with errno set.
    ssize_t Read(char* buffer, std::size_t size) const {
        ssize_t count = 0;
        do {
            count = read(mNumber, buffer, size);
        } while (count < 0 && errno == EINTR);
        return count;
    }

private:
    bool mIsOurs;
    int mNumber;
};

std::string SystemMessage() {
    return std::generic_category().message(errno);
}

} // namespace

Story ReadStory(const std::string& path, const StoryReadOptions& options) {
    StoryDriver driver(path == kStandardInput ? "standard input" : path, options);
    const Descriptor file(path);
    if (!file.IsOpen()) {
        driver.FailToRead(SystemMessage());
    }
    ssize_t count = 0;
    do {
        count = file.Read(driver.Buffer(options.pieceSize), options.pieceSize);
        if (count < 0) {
            driver.FailToRead(SystemMessage());
        }
        driver.Parse(static_cast<std::size_t>(count), count == 0);
    } while (count > 0);
    return driver.Finish();
}

Story ReadStory(const StoryFile& file) {
    StoryReadOptions options;
    options.limits = file.limits;
    return ReadStory(file.path, options);
}

Story ReadStoryFromMemory(std::string_view bytes, const std::string& name, const StoryReadOptions& options) {
    StoryDriver driver(name, options);
    bool isLast = false;
    do {
        const std::string_view piece = bytes.substr(0, options.pieceSize);
        bytes.remove_prefix(piece.size());
        isLast = bytes.empty();
        std::copy(piece.begin(), piece.end(), driver.Buffer(options.pieceSize));
        driver.Parse(piece.size(), isLast);
    } while (!isLast);
    return driver.Finish();
}

} // namespace zonstory
