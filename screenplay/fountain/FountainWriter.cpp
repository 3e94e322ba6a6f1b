#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/Story.h>

#include "fountain/Characters.h"
#include "fountain/Lines.h"
#include "fountain/Markup.h"
#include "fountain/TitlePage.h"

namespace zonscreenplay {

namespace {

using namespace fountain;
using zonstoryparser::ElementType;
using zonstoryparser::Paragraph;

constexpr std::string_view kByteOrderMark = "\ufeff";

std::string TextOf(const boost::intrusive_ptr<Paragraph>& paragraph) {
    zoncore::UString text;
    zonstoryparser::GetTextRuns(paragraph, text);
    std::string utf8 = zoncore::UTF16to8(text);
    EndLinesWithLineFeeds(utf8);
    return utf8;
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    std::size_t end = 0;
    do {
        end = text.find('\n');
        lines.push_back(WithoutTrailingBlanks(text.substr(0, end)));
        text.remove_prefix(std::min(end, text.size() - 1) + 1);
    } while (end != std::string_view::npos && !text.empty());
    return lines;
}

// Its lines without those at either end that say nothing.
std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines = text.empty() ? std::vector<std::string_view>() : SplitLines(text);
    const auto says = [](std::string_view line) { return !WithoutBlanks(line).empty(); };
    lines.erase(std::find_if(lines.rbegin(), lines.rend(), says).base(), lines.end());
    lines.erase(lines.begin(), std::find_if(lines.begin(), lines.end(), says));
    return lines;
}

std::string InOneLine(std::string_view text) {
    std::string line;
    for (const std::string_view part : LinesOf(text)) {
        line += (line.empty() || WithoutBlanks(part).empty() ? "" : " ") + std::string(WithoutBlanks(part));
    }
    return line;
}

bool IsSpeech(ElementType kind) {
    return kind == zonstoryparser::kDialog || kind == zonstoryparser::kParenthetical;
}

struct Piece {
    ElementType kind;
    std::string text;
    const Paragraph* paragraph;
};

// What a scene says, in order; its heading apart.
struct Content {
    std::string heading;
    std::vector<Piece> pieces;
};

// The last heading is the scene's, as for its packet; one before it is text.
Content Gather(const zonstoryparser::Scene& scene) {
    Content content;
    for (const auto& paragraph : scene.paragraphs) {
        std::string text = TextOf(paragraph);
        if (LinesOf(text).empty()) {
            continue;
        }
        if (paragraph->element == zonstoryparser::kSceneHeading) {
            text.swap(content.heading);
        }
        if (!text.empty()) {
            content.pieces.push_back({paragraph->element, std::move(text), paragraph.get()});
        }
    }
    return content;
}

class Writer {
public:
    explicit Writer(const Screenplay& screenplay) : mScreenplay(screenplay) {
        for (const DualDialogue& dual : screenplay.dualDialogue) {
            mDual.insert(dual.right.get());
        }
    }

    std::string Write() {
        WriteTitlePage();
        const auto& document = mScreenplay.root->document;
        if (document && document->body && document->body->section) {
            const auto& scenes = document->body->section->scenes;
            for (const auto& scene : scenes) {
                WriteScene(*scene, scenes.size() == 1);
            }
        }
        const bool beginsWithMark = mText.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0;
        return beginsWithMark ? "\n" + mText : std::move(mText); // a character of the script, not of the file
    }

private:
    // The first key has to be one that title pages have: it tells the reader what they are. Text without a key goes on
    // under the one before.
    void WriteTitlePage() {
        for (const auto& [key, value] : mScreenplay.titlePage) {
            if (mIsTop && !IsKnownTitleKey(key)) {
                End("Title:");
            }
            if (IsTitleKey(key)) {
                End(key + ":");
            }
            for (const std::string_view line : LinesOf(value)) {
                const std::string_view bare = WithoutBlanks(line);
                mText += bare.empty() ? "" : "    " + Escaped(bare) + "\n";
            }
        }
    }

    // Text before the first heading stands without one, unless the reader would then take the whole for no screenplay.
    void WriteScene(const zonstoryparser::Scene& scene, bool isOnlyScene) {
        const Content content = Gather(scene);
        const std::string number = InOneLine(zoncore::UTF16to8(scene.sceneNumber));
        const bool hasCue = std::any_of(content.pieces.begin(), content.pieces.end(),
                                        [](const Piece& piece) { return piece.kind == zonstoryparser::kCharacter; });
        const bool says = std::any_of(content.pieces.begin(), content.pieces.end(), [](const Piece& piece) {
            return piece.kind != zonstoryparser::kTransition && piece.kind != zonstoryparser::kParenthetical;
        }); // else it would be left out without a heading
        const bool isBeforeHeadings = mIsFirstScene && says && (hasCue || !isOnlyScene);
        if (!content.heading.empty() || !number.empty() || !isBeforeHeadings) {
            Begin();
            End(HeadingLine(InOneLine(content.heading), number));
        }
        mIsFirstScene = false;
        mCue = nullptr;
        mIsSpeech = false;
        for (std::size_t index = 0; index < content.pieces.size(); ++index) {
            WritePiece(content.pieces[index],
                       index + 1 < content.pieces.size() && IsSpeech(content.pieces[index + 1].kind));
        }
    }

    void WritePiece(const Piece& piece, bool isFollowed) {
        if (piece.kind == zonstoryparser::kCharacter) {
            mCue = &piece;
            return WriteCue(isFollowed, mDual.count(piece.paragraph) > 0);
        }
        if (piece.kind == zonstoryparser::kTransition) {
            Begin();
            return End(TransitionLine(InOneLine(piece.text), mIsTop));
        }
        if (!IsSpeech(piece.kind) || mCue == nullptr) {
            return WriteAction(piece.text);
        }
        if (!mIsSpeech) {
            WriteCue(true, false); // what stands between has ended the speech
        }
        WriteSpeech(piece);
    }

    void WriteCue(bool isFollowed, bool isDual) {
        Begin();
        End(CueLine(InOneLine(mCue->text), isDual, isFollowed, mIsTop));
        mIsSpeech = true;
    }

    void WriteSpeech(const Piece& piece) {
        if (piece.kind == zonstoryparser::kParenthetical) {
            return End(ParentheticalLine(InOneLine(piece.text)));
        }
        for (const std::string_view line : LinesOf(piece.text)) {
            const std::string_view bare = WithoutBlanks(line);
            End(bare.empty() ? "  " : DialogueLine(bare));
        }
    }

    void WriteAction(const std::string& text) {
        Begin();
        const std::vector<std::string_view> lines = LinesOf(text);
        for (std::size_t index = 0; index < lines.size(); ++index) {
            const std::string_view next = index + 1 < lines.size() ? lines[index + 1] : std::string_view();
            const bool isLast = index + 1 == lines.size();
            End(ActionLine(lines[index], index == 0, isLast || !next.empty() ? next : "!", mIsTop));
        }
    }

    // An empty line before all that is no part of a speech.
    void Begin() {
        mText += mText.empty() ? "" : "\n";
        mIsSpeech = false;
    }

    void End(const std::string& line) {
        mText += line + "\n";
        mIsTop = false;
    }

    const Screenplay& mScreenplay;
    std::unordered_set<const Paragraph*> mDual; // cues of the second of two speeches
    std::string mText;
    bool mIsTop = true;
    bool mIsFirstScene = true;
    const Piece* mCue = nullptr; // whose speech goes on; of the open scene
    bool mIsSpeech = false;      // nothing has ended it in the text
};

} // namespace

std::string WriteFountain(const Screenplay& screenplay) {
    return Writer(screenplay).Write();
}

} // namespace zonscreenplay
