#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <zonscreenplay/Screenplay.h>
#include <zonstoryparser/StoryParser.h>

#include "source/LineRecorder.h"

namespace zonscreenplay {

/// What the readers of formats without scenes of their own call: it drives the library's parse handler and gathers what
/// the model has no place for.
///
///     ScriptBuilder builder("film.fountain", options);
///     builder.BeginScene({"12A", "INT. WHEELHOUSE - NIGHT", ""}, 7);
///     builder.AddParagraph(zonstoryparser::kCharacter, "JO", 9);
///     builder.AddParagraph(zonstoryparser::kDialog, "He has a ticket.", 10);
///     return builder.Finish(Format::Fountain);
///
/// Everything that all formats have in common is settled here: a paragraph without text is dropped, each of the others
/// gets an identity that depends on nothing but its place, and what is said before the first heading stands in a scene of
/// its own. Texts are UTF-8 unless they are UString, and keep every character; lines count from 1.
class ScriptBuilder {
public:
    struct Heading {
        std::string_view number;   ///< As written; may be empty.
        std::string_view text;     ///< May be empty: the scene is there all the same.
        std::string_view duration; ///< "h:m:s"; only where the file says a duration.
    };

    /// @param name  Of the file, for errors.
    ScriptBuilder(std::string name, const ReadOptions& options);
    ScriptBuilder(const ScriptBuilder&) = delete;
    ScriptBuilder& operator=(const ScriptBuilder&) = delete;

    /// @throws ReadError beyond a limit; so do all the others.
    void BeginScene(const Heading& heading, std::size_t line);
    /// Of the scene begun last. Before the first one, what is set here is lost.
    SceneProperties& Properties();

    /// Before the first scene, one is begun without number and heading, and a warning says so. Action and speech begin
    /// one; a transition alone, the FADE IN of most scripts, says nothing, and would give every scene the next number.
    void AddParagraph(zonstoryparser::ElementType kind, std::string_view text, std::size_t line);
    void AddParagraph(zonstoryparser::ElementType kind, const zoncore::UString& text, std::size_t line);
    /// The cue added last is spoken together with the cue before it in the same scene. Without one, nothing happens.
    void MarkDualDialogue();

    void AddTitle(std::string_view key, std::string_view value);
    void AddNote(std::string_view text, std::size_t line);
    void Warn(WarningKind kind, std::size_t line, std::string text);

    bool HasHeading() const { return mHasHeading; } ///< BeginScene() was called.
    bool HasCue() const { return mHasCue; }         ///< A cue was kept.

    /// @throws ReadError always, with the file's name.
    [[noreturn]] void Fail(Position position, const std::string& message) const;
    /// Called once, at the end.
    Screenplay Finish(Format format);

private:
    void OpenScene(const zoncore::UString& number, std::size_t line);
    struct HeldBack {
        zonstoryparser::ElementType kind;
        zoncore::UString text;
        std::size_t line;
    };

    void OpenSceneBeforeHeading(std::size_t line);
    void LeaveOutHeldBack();
    void Keep(zonstoryparser::ElementType kind, const zoncore::UString& text, std::size_t line);
    void Emit(zonstoryparser::ElementType kind, const zoncore::UString& text, std::size_t line);
    void StartParagraph(zonstoryparser::ElementType kind);
    void Spend(std::size_t items, std::size_t line);

    std::string mName;
    ReadOptions mOptions;
    zonstoryparser::StoryParser mHandler;
    Screenplay mResult;
    LineRecorder mLines;
    const zonstoryparser::Section* mSection = nullptr; // of the body, which the result owns
    SceneProperties mNowhere;
    zoncore::AttributeMap mParagraph; // kept from one to the next, as is the text: nothing is allocated anew
    zoncore::UString& mIdentity;      // its values
    zoncore::UString& mElement;
    zoncore::UString mText;
    zoncore::UString mDuration;      // of the open scene
    std::vector<HeldBack> mHeldBack; // before the first scene, as long as nothing is said
    boost::intrusive_ptr<zonstoryparser::Paragraph> mLeftCue;
    boost::intrusive_ptr<zonstoryparser::Paragraph> mRightCue;
    std::size_t mItems = 0;
    std::size_t mParagraphs = 0;
    bool mHasHeading = false;
    bool mHasCue = false;
};

} // namespace zonscreenplay
