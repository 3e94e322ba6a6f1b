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
#include "files/Checksum.h"
#include "files/FileError.h"

/// A clip as the program sees it: a file that carries XMP inside, or beside it in a sidecar.
namespace zonstory {

class ChangeWitness;
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
    std::optional<HashKind> hash = {};            ///< Of which the record gets checksums; none unless asked for.
    ChangeWitness* witness = nullptr;             ///< Told of the change; null for nobody.
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
    std::string checksumBefore = {}; ///< Of the whole file, as Hasher tells it; empty where none was asked for.
    std::string checksumAfter = {};

    /// The way back.
    RecordedEdits Reversed() const { return {sizeAfter, sizeBefore, inverse, edits, checksumAfter, checksumBefore}; }
};

/// A value that is another one now.
struct PropertyChange {
    std::string path;                  ///< As people write it: "xmpScript:dialogSequence[2]/xmpScript:character".
    std::optional<std::string> before; ///< UTF-8, as the next; nothing where there was none.
    std::optional<std::string> after;

    bool operator==(const PropertyChange&) const = default;
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
    std::vector<PropertyChange> properties = {}; ///< As the record; nothing where only bytes are known.
    std::optional<Target> unsettled = {};        ///< The clip's other place, which is to be settled with SettleClip().
};

/// Sees every change of a file on its way, and can still prevent it. Called on the thread that makes the change.
class ChangeWitness {
public:
    virtual ~ChangeWitness() = default;
    /// The new version is proven and will be the file, as this says. What is thrown by this or the next ends the work; the
    /// file is then as it was.
    virtual void Announce(const UpdateResult& change) = 0;
    /// The last call before the new version takes the name; what it was announced with is to be safe by now.
    virtual void Confirm() = 0;
    /// It is the file.
    virtual void Done() noexcept = 0;
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
/// @param record   Where it has checksums, the inverse may be left out: both versions are held against them, also where
///                 nothing is changed because `options` say so.
/// @param options  Of these, where the metadata goes means nothing.
/// @throws FileError when the file is not the one that the record begins with or would not become the one that it ends
///         with, as far as it tells: by size, by the bytes in the edits' places, by checksum; when a clip's picture or sound
///         would change, or what is named as a clip is no container that this program writes; as UpdateClip() otherwise.
UpdateResult RepeatEdits(const std::filesystem::path& file, const RecordedEdits& record, const ClipOptions& options,
                         KeptFolder* kept = nullptr);

/// Whether a file looks as if a recorded change had been made: by its size, and by the bytes in the edits' places. A file
/// that is not there has no bytes. Reads little; the checksum alone is a proof.
/// @throws FileError when it cannot be read.
bool LooksEdited(const std::filesystem::path& file, const RecordedEdits& record);
/// Whether it has been made, proven by checksum; false for a record without. Reads the whole file where it looks so.
bool IsEdited(const std::filesystem::path& file, const RecordedEdits& record);

} // namespace zonstory
