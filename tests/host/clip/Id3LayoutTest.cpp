// MP3 files with all that a tag can have in front of its frames, in them and behind.

#include <gmock/gmock.h>

#include "host/clip/LayoutInvariants.h"
#include "host/clip/MadeChunks.h"

#include <rapidcheck/gtest.h> // wants GoogleTest in front

namespace {

using namespace std::string_literals;

const std::string kSound = "\xFF\xFB\x90\0sound, and more of it"s;

bool Maybe(int oneIn = 2) {
    return *rc::gen::inRange(0, oneIn) == 0;
}

std::string Number(std::uint64_t value, unsigned bits) {
    return support::Number(value, true, 4, bits);
}

std::string Unsynchronised(const std::string& bytes) {
    std::string changed;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        changed += bytes[index];
        const bool isLast = index + 1 == bytes.size();
        if (bytes[index] == '\xFF' && (isLast || bytes[index + 1] == 0 || (bytes[index + 1] & 0xE0) == 0xE0)) {
            changed += '\0';
        }
    }
    return changed;
}

std::string Frame(int version, const std::string& name, const std::string& content,
                  const std::string& flags = "\0\0"s) {
    return name + Number(content.size(), version == 3 ? 8 : 7) + flags + content;
}

std::string PacketFrame(int version) {
    const std::string content = "XMP\0"s + support::MadePacket(static_cast<std::size_t>(*rc::gen::inRange(0, 900)));
    switch (*rc::gen::inRange(0, 3)) {
    case 0:
        return version == 3 ? Frame(3, "PRIV", "g" + content, "\0\x20"s)
                            : Frame(4, "PRIV", "g" + Number(content.size(), 7) + content, "\0\x41"s);
    case 1:
        return Frame(version, "PRIV", content, version == 3 ? "\0\0"s : "\0\2"s);
    default:
        return Frame(version, "PRIV", content);
    }
}

// A packet in a tag with a footer would leave no room for padding when it goes, so there is none.
std::string Frames(int version, bool isUnsynchronised, bool hasFooter) {
    std::string frames;
    for (int left = *rc::gen::inRange(1, 4); left > 0; --left) {
        const std::string content =
            *rc::gen::element("\1\xFF\xFEK\0"s, "\0\xFC in Latin-1"s, "x\0\xFF"s, "\xFF\xFF\xE0"s);
        const bool inFrame = version == 4 && isUnsynchronised;
        frames += Frame(version, *rc::gen::element<std::string>("TIT2", "PRIV", "APIC"),
                        inFrame ? Unsynchronised(content) : content, inFrame ? "\0\2"s : "\0\0"s);
        frames += !hasFooter && Maybe(4) ? PacketFrame(version) : "";
    }
    return frames;
}

std::string MakeTag() {
    const int version = Maybe() ? 3 : 4;
    const bool isUnsynchronised = Maybe(3);
    const bool isExtended = Maybe(3) && !(version == 3 && isUnsynchronised);
    const bool hasFooter = version == 4 && Maybe(3);
    const auto padding = static_cast<std::size_t>(hasFooter ? 0 : *rc::gen::element(0, 1, 9, 10, 500, 3000, 20000));
    std::string body;
    if (isExtended) {
        body = version == 3 ? Number(6, 8) + "\0\0"s + Number(Maybe() ? padding : 7, 8) : Number(6, 7) + "\1\0"s;
    }
    const std::string frames = Frames(version, isUnsynchronised, hasFooter);
    body += version == 3 && isUnsynchronised ? Unsynchronised(frames) : frames;
    body += std::string(padding, '\0');
    const int flags = (isUnsynchronised ? 0x80 : 0) | (isExtended ? 0x40 : 0) | (hasFooter ? 0x10 : 0);
    const std::string head =
        std::string{static_cast<char>(version), '\0', static_cast<char>(flags)} + Number(body.size(), 7);
    return "ID3" + head + body + (hasFooter ? "3DI" + head : "");
}

RC_GTEST_PROP(Id3Layout, IsEditedExactly, ()) {
    const std::string tag = Maybe(5) ? "" : MakeTag();
    const std::string between = Maybe(5) ? MakeTag() : Maybe(5) ? std::string(10, '\0') : "";
    support::RequireExactEdits(tag + (tag.empty() ? "" : between) + kSound +
                               (Maybe() ? "TAG" + std::string(125, ' ') : ""));
}

TEST(Id3Layout, LeavesAloneWhatIsOdd) {
    const auto tag = [](const std::string& head, const std::string& body) {
        return "ID3" + head + Number(body.size(), 7) + body + kSound;
    };
    const std::string title = Frame(3, "TIT2", "title");
    const std::pair<std::string, const char*> files[] = {
        {tag("\2\0\0"s, "TT2\0\0\5title"s), "ID3v2.2"},
        {tag("\5\0\0"s, title), "not known"},
        {tag("\3\0\1"s, title), "flag"},
        {tag("\3\0\0"s, title + "what"), "no padding"},
        {tag("\3\0\0"s, "no frame, this"), "no frame"},
        {tag("\4\0\0"s, "TIT2\0\0\0\xFF\0\0"s + std::string(255, 't')), "length"},
        {tag("\3\0\0"s, Frame(3, "TIT2", "title").substr(0, 12)), "beyond the tag"},
        {tag("\3\0\x40"s, Number(10, 8) + "\x80\0"s + Number(0, 8) + "crc!" + title), "extended header"},
        {tag("\4\0\x40"s, Number(12, 7) + "\1\x20\5crc!!"s + Frame(4, "TIT2", "title")), "extended header"},
        {tag("\3\0\0"s, Frame(3, "PRIV", "zip", "\0\x80"s)), "compressed"},
        {tag("\3\0\0"s, Frame(3, "PRIV", "XMP\0\xFF\xFE<"s)), "UTF-8"},
        {"ID3\3\0\0"s + Number(5, 7) + "\0\0\0\0\0fLaC and so on"s, "no MP3"},
        {tag("\4\0\0"s, Frame(4, "ASPI", "places")), "places"},
        {tag("\3\0\0"s, Frame(3, "CHAP", "one\0timetime\0\0\1\0\0\0\2\0"s)), "places"},
        {tag("\3\0\0"s, title + "\0\0\0rest"s), "no padding"},
    };
    for (const auto& [file, reason] : files) {
        EXPECT_THAT(support::ReasonAgainst(file), testing::HasSubstr(reason));
    }
    EXPECT_THROW(support::LayoutOf("ID3\3\0\0"s + Number(99, 7) + title), zonstory::DamagedFile);
}

} // namespace
