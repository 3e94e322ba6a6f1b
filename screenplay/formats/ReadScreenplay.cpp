#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

#include "fdx/FdxReader.h"
#include "fountain/FountainReader.h"
#include "source/ByteSource.h"
#include "source/TextDecoder.h"
#include "storyfile/StoryFileReader.h"
#include "xml/XmlDriver.h"

namespace zonscreenplay {

namespace {

class Descriptor {
public:
    explicit Descriptor(const std::string& path) : mNumber(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (mNumber >= 0) {
            close(mNumber);
        }
    }

    int Number() const { return mNumber; }

private:
    int mNumber;
};

bool IsSameLetter(char left, char right) {
    return left == right || (left >= 'A' && left <= 'Z' && left - 'A' + 'a' == right);
}

bool IsNamedAsFountain(std::string_view name) {
    constexpr std::string_view kEndings[] = {".fountain", ".spmd", ".txt"};
    return std::any_of(std::begin(kEndings), std::end(kEndings), [&](std::string_view ending) {
        return name.size() >= ending.size() &&
               std::equal(ending.begin(), ending.end(), name.end() - static_cast<std::ptrdiff_t>(ending.size()),
                          [](char letter, char ofName) { return IsSameLetter(ofName, letter); });
    });
}

// Text in front of which a person would not write these words. Of UTF-16, the byte that is null is passed over.
bool BeginsAsXml(std::string_view head) {
    std::string start;
    for (const char byte : head.substr(0, 64)) {
        if (byte != '\0' && byte != '\xFF' && byte != '\xFE') {
            start += byte;
        }
    }
    std::string_view rest = start;
    rest.remove_prefix(rest.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0);
    rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
    constexpr std::string_view kStarts[] = {"<?xml", "<!DOCTYPE", "<!--", "<Talewright", "<FinalDraft"};
    return std::any_of(std::begin(kStarts), std::end(kStarts),
                       [&](std::string_view known) { return rest.substr(0, known.size()) == known; });
}

bool IsFountain(const ByteSource& source, const std::string& name, const ReadOptions& options) {
    return options.format ? *options.format == Format::Fountain
                          : IsNamedAsFountain(name) && !BeginsAsXml(source.Head());
}

std::unique_ptr<XmlReader> ChooseByRoot(const XmlDriver& driver, const zoncore::UString& root) {
    const bool isFDX = root == u"FinalDraft";
    const std::optional<Format>& wanted = driver.Options().format;
    if (wanted == Format::FDX && !isFDX) {
        driver.Fail(driver.Here(), "no FDX: the file's root is <" + zoncore::UTF16to8(root) + ">, not <FinalDraft>");
    }
    if (isFDX && wanted != Format::Story) {
        return std::make_unique<FdxReader>(driver);
    }
    return std::make_unique<StoryFileReader>(driver, root);
}

Screenplay ReadXml(ByteSource& source, const std::string& name, const ReadOptions& options) {
    XmlDriver driver(name, options, &ChooseByRoot);
    std::size_t count = 0;
    do {
        count = source.Next(driver.Buffer(options.pieceSize), options.pieceSize);
        driver.Parse(count, count == 0);
    } while (count > 0);
    return driver.Finish();
}

std::string ReadWhole(ByteSource& source, const ReadOptions& options, const ScriptBuilder& builder) {
    std::string bytes;
    std::size_t count = 0;
    do {
        const std::size_t before = bytes.size();
        bytes.resize(before + options.pieceSize);
        count = source.Next(bytes.data() + before, options.pieceSize);
        bytes.resize(before + count);
        if (bytes.size() > options.limits.size) {
            builder.Fail({1, 1}, "the file is longer than " + std::to_string(options.limits.size) + " bytes");
        }
    } while (count > 0);
    return bytes;
}

Screenplay ReadText(ByteSource& source, const std::string& name, const ReadOptions& options) {
    ScriptBuilder builder(name, options);
    ReadFountain(DecodeText(ReadWhole(source, options, builder), builder), options, builder);
    return builder.Finish(Format::Fountain);
}

Screenplay Read(const ByteSource::Read& read, const std::string& name, const ReadOptions& options) {
    ByteSource source(read);
    return IsFountain(source, name, options) ? ReadText(source, name, options) : ReadXml(source, name, options);
}

} // namespace

Screenplay ReadScreenplay(const std::string& path, const ReadOptions& options) {
    const Descriptor file(path);
    if (file.Number() < 0) {
        throw ReadError(path, {}, std::generic_category().message(errno));
    }
    return ReadScreenplay(file.Number(), path, options);
}

Screenplay ReadScreenplay(int descriptor, const std::string& name, const ReadOptions& options) {
    return Read(ReadDescriptor(descriptor, name), name, options);
}

Screenplay ReadScreenplayFromMemory(std::string_view bytes, const std::string& name, const ReadOptions& options) {
    return Read(ReadMemory(bytes), name, options);
}

} // namespace zonscreenplay
