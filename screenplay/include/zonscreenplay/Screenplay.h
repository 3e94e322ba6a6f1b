#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zonscreenplay/Export.h>
#include <zonscreenplay/Limits.h>
#include <zonscreenplay/ReadError.h>
#include <zonscreenplay/SourceLines.h>
#include <zonstoryparser/StoryModel.h>

/// Reads a screenplay as people have it into the model of a story: a story file, FDX or Fountain.
///
///     const zonscreenplay::Screenplay screenplay = zonscreenplay::ReadScreenplay("film.fdx");
///     for (const auto& scene : screenplay.root->document->body->section->scenes) { ... }
///
/// XML is read as it comes, in pieces; text files are read whole. All within limits, and nothing outside the file is ever
/// fetched. Texts of this header are UTF-8; those of the model are UTF-16. Calls share nothing, so any number of threads
/// may read at once.
namespace zonscreenplay {

enum class Format {
    Story,    ///< XML whose root is Talewright.
    FDX,      ///< XML whose root is FinalDraft.
    Fountain, ///< Plain text with a few marks.
};

struct ReadOptions {
    /// Nothing: told by the file. XML is known by its root, whatever the name; a name that ends in .fountain, .spmd or
    /// .txt means Fountain.
    std::optional<Format> format;
    bool strictFountain = false; ///< Only the headings that Fountain itself knows.
    bool recordLines = true;     ///< Fill Screenplay::lines.
    Limits limits;
    std::size_t pieceSize = std::size_t{64} * 1024; ///< How many bytes are read at a time.
};

/// What a warning is about. The words for them stand in reports and never change.
enum class WarningKind {
    LeftOut,       ///< Text of a kind that the story has no place for.
    Omitted,       ///< A scene that was cut and keeps its number.
    BeforeHeading, ///< Text before the first heading; it is a scene of its own.
    Unclosed,      ///< A comment that begins and never ends.
    Encoding,      ///< Bytes that are not what the file's encoding says.
    Assumed,       ///< Something read as more than the format alone makes of it.
};

struct Warning {
    WarningKind kind = WarningKind::LeftOut;
    std::size_t line = 0; ///< From 1.
    std::string text;
};

/// What a format tells of a scene beside its content. Empty, 0 and false where it tells nothing.
struct SceneProperties {
    std::string page;        ///< As written.
    std::size_t eighths = 0; ///< Length on the page, in eighths of a page.
    std::string revision;    ///< The revision set that the heading belongs to, as the file names or numbers it.
    std::string color;       ///< Of that revision's pages.
    bool omitted = false;    ///< The scene was cut; its number and the heading OMITTED are left.
};

/// A remark in the script that is none of its text.
struct Note {
    std::size_t line = 0; ///< From 1.
    std::string text;
};

/// Two speeches that are spoken at once, by their cues.
struct DualDialogue {
    boost::intrusive_ptr<zonstoryparser::Paragraph> left;
    boost::intrusive_ptr<zonstoryparser::Paragraph> right;
};

struct Screenplay {
    Format format = Format::Story;
    boost::intrusive_ptr<zonstoryparser::Talewright> root; ///< Never null after reading.
    SourceLines lines;
    std::vector<std::pair<std::string, std::string>> titlePage; ///< Key and value, in file order; the key may be empty.
    std::vector<SceneProperties> scenes;                        ///< Of the body's scenes, one each, in order.
    std::vector<DualDialogue> dualDialogue;
    std::vector<Note> notes;
    std::vector<Warning> warnings; ///< By line.
};

/// @throws ReadError when the file cannot be read, is not well-formed, breaks its format's rules, or is no screenplay.
ZONSCREENPLAY_API Screenplay ReadScreenplay(const std::string& path, const ReadOptions& options = {});

/// Reads what is left of an open file, which stays open.
/// @param name  Stands for the file's name: in errors, and where the format is told by it.
/// @throws ReadError
ZONSCREENPLAY_API Screenplay ReadScreenplay(int descriptor, const std::string& name, const ReadOptions& options = {});

/// Reads a screenplay from memory.
/// @throws ReadError
ZONSCREENPLAY_API Screenplay ReadScreenplayFromMemory(std::string_view bytes, const std::string& name,
                                                      const ReadOptions& options = {});

/// A story file, UTF-8, that reads back as the same model.
/// @throws std::invalid_argument when a text holds a character that no XML file can carry, such as U+0001.
ZONSCREENPLAY_API std::string WriteStoryFile(const zonstoryparser::Talewright& story);

/// The body as Fountain, UTF-8, whose reading gives the same scenes, numbers, speakers and words.
ZONSCREENPLAY_API std::string WriteFountain(const Screenplay& screenplay);

} // namespace zonscreenplay
