#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <zonstoryparser/XMPToolkit.h>

#include "clip/layout/Edit.h"
#include "files/FileError.h"

/// A clip as the program sees it: a file that carries XMP inside, or beside it in a sidecar.
namespace zonstory {

class KeptFolder;
struct PlaceRules;

enum class Target { Inside, Sidecar };

/// How a sidecar is named: clip.xmp, or clip.mov.xmp.
enum class SidecarName { Short, Full };

/// Where a clip's metadata goes. When it is read, both places are looked at, and this says which of the two counts where
/// both say something.
enum class Placement {
    Auto,   ///< Inside where that leaves all else as it is and breaks no seal, else into a sidecar; and where a sidecar
            ///< says something already, there.
    Inside, ///< Inside or nowhere, also where a hash list then no longer holds.
    Sidecar ///< Into a sidecar, also where the container has a place for it. The clip stays as it is.
};

struct ClipOptions {
    Placement placement = Placement::Auto;
    SidecarName sidecarName = SidecarName::Short; ///< For a sidecar that does not exist yet.
    bool verifyMedia = true;                      ///< Compare picture and sound in the new version with the old.
    bool preserveTime = false;                    ///< The file keeps its modification time.
    bool dryRun = false;                          ///< Say what would be done; nothing is copied.
    std::chrono::seconds settle{0};               ///< Refuse a file that was changed more recently.
    PlaceRules* rules = nullptr;                  ///< Of this run (clip/PlaceRules.h); null to go by formats alone.
};

/// What one clip carries.
struct ClipContents {
    Target target = Target::Inside;
    std::filesystem::path file; ///< The file that holds the XMP, or would: the clip itself or its sidecar. Absolute.
    bool hasXMP = false;
    SXMPMeta xmp;
    SXMPMeta other;                 ///< What its other place says, where there are rules.
    std::string contradiction;      ///< Between the two places, in one line for the user; empty where there is none.
    std::vector<std::string> notes; ///< What the user should know, as in UpdateResult.
};

/// A change of a file as it was made: the edits, and those that take it back. A sidecar that is not there has no bytes.
struct RecordedEdits {
    std::uint64_t sizeBefore = 0;
    std::uint64_t sizeAfter = 0;
    EditList edits;
    EditList inverse;

    /// The way back.
    RecordedEdits Reversed() const { return {sizeAfter, sizeBefore, inverse, edits}; }
};

enum class Outcome { Written, Unchanged, WouldWrite };

struct UpdateResult {
    Outcome outcome = Outcome::Unchanged;
    Target target = Target::Inside;
    std::filesystem::path file;     ///< As in ClipContents.
    std::vector<std::string> notes; ///< What the user may want to know though all went well. One line each, without the
                                    ///< clip's name.
    std::vector<std::string> warnings; ///< As `notes`, of what is not as it was: other hard links keep the old version,
                                       ///< an owner or an attribute could not be kept.
    RecordedEdits record;              ///< Of `file`. Nothing where nothing would change.
    std::optional<Target> unsettled;   ///< The clip's other place, which is to be settled with SettleClip().
};

/// Why one clip could not be read or changed, in one line without the clip's name, to be said behind it: "is empty". The
/// clip is as it was.
class ClipError : public FileError {
public:
    using FileError::FileError;
};

/// Reads what a clip carries; changes nothing, and waits for nobody: what it finds is the version before or after another
/// run's.
///
/// A clip is any name of a regular file; links are followed. Of its two places that one is told which says something of
/// the rules' subject, and of two `options.placement`'s, under Auto the sidecar. Where neither does, or there are no rules:
/// its inside where metadata can be written there, else its sidecar, and without one its inside after all. A sidecar that
/// may be another clip's is not looked at.
/// @throws ClipError when the clip is missing, unreadable, empty, damaged or itself a sidecar, or its sidecar is no XMP.
ClipContents ReadClip(const std::filesystem::path& clip, const ClipOptions& options);

/// Changes a clip's metadata, in one file. `change` gets what the clip carries now (an empty object if nothing); of the
/// rules' subject what the other place says, where this one says nothing. Where its result says the same as before, no
/// file is touched. Otherwise the clip under its name is at every moment the old one or the new one, whole; of runs on one
/// clip at the same time, one waits for the other.
///
/// With rules, both places say the same of their subject in the end, or nothing is changed. Where it takes a change of the
/// other place for that, the result tells it. The order is such that a run that ends between the two leaves the last text
/// in the place that counts.
///
/// @param change  Called once, and again from the start and with a fresh object when it turns out that the metadata goes
///                into a sidecar, or when another run changed the clip while this one waited for it. So it collects
///                nothing without clearing it first.
/// @param kept    As in Workspace (clip/Workspace.h), for those who change many clips.
/// @throws ClipError, ClipInterrupted (clip/Interrupt.h) among them, and whatever `change` throws; the clip is then as
///         it was and nothing is left beside it.
UpdateResult UpdateClip(const std::filesystem::path& clip, const ClipOptions& options,
                        const std::function<void(SXMPMeta&)>& change, KeptFolder* kept = nullptr);

/// Takes out of one place of a clip what the other one says better, in the same safe way.
/// @param place  UpdateResult::unsettled.
/// @pre `options.rules` is set.
/// @throws ClipError as UpdateClip().
UpdateResult SettleClip(const std::filesystem::path& clip, Target place, const ClipOptions& options,
                        KeptFolder* kept = nullptr);

/// Makes a recorded change of a file, a clip or a sidecar, as UpdateClip() makes one: the new version is proven and takes
/// the name in one step. What was done is taken back by its record reversed.
/// @param options  Of these, where the metadata goes means nothing.
/// @throws FileError when the file has not the size, or in the edits' places not the bytes, that the record says; as
///         UpdateClip() otherwise.
UpdateResult RepeatEdits(const std::filesystem::path& file, const RecordedEdits& record, const ClipOptions& options,
                         KeptFolder* kept = nullptr);

} // namespace zonstory
