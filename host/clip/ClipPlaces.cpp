#include "clip/ClipPlaces.h"

#include <optional>
#include <system_error>
#include <utility>

#include "clip/PlaceRules.h"

namespace zonstory {

namespace {

namespace fs = std::filesystem;
using Change = std::function<void(SXMPMeta&)>;

struct Places {
    StatePointer inside;
    SidecarChoice choice;
    StatePointer sidecar; ///< Null where there is none, until it is asked for; and where it cannot be read, which is a
    std::string problem;  ///< problem.
};

// Of a clip that may also carry its metadata inside, a sidecar may be the neighbour's that has no other place.
bool MayBeAnothers(const ClipState& inside, const ClipOptions& options) {
    return options.rules != nullptr && inside.noExactWay.empty() && options.rules->names.IsShared(inside.file.Path());
}

SidecarChoice SidecarOf(const ClipState& inside, const ClipOptions& options) {
    return MayBeAnothers(inside, options) ? FullSidecar(inside.file.Path())
                                          : ChooseSidecar(inside.file.Path(), options.sidecarName);
}

Places OpenPlaces(const fs::path& clip, const ClipOptions& options) {
    Places places;
    places.inside = OpenClip(clip);
    try {
        ReadInside(*places.inside);
    } catch (const DamagedFile& damage) {
        if (options.placement != Placement::Sidecar) {
            throw;
        }
        places.inside->noExactWay = std::string("it ") + damage.what();
    }
    places.choice = SidecarOf(*places.inside, options);
    try {
        places.sidecar = places.choice.exists ? LoadSidecar(places.choice) : nullptr;
    } catch (const ClipError& error) {
        places.problem = error.what();
    }
    return places;
}

ClipState& SidecarIn(Places& places) {
    if (!places.problem.empty()) {
        throw ClipError(places.problem);
    }
    places.sidecar = places.sidecar ? std::move(places.sidecar) : LoadSidecar(places.choice);
    return *places.sidecar;
}

bool Speaks(const StatePointer& state, const PlaceRules* rules) {
    return rules != nullptr && state && state->hasXMP && rules->subject.IsIn(state->xmp);
}

std::string Contradiction(const ClipState& inside, const ClipState& sidecar, const PlaceRules* rules) {
    const bool isPossible = rules != nullptr && inside.hasXMP && sidecar.hasXMP;
    return isPossible ? rules->subject.Contradiction(inside.xmp, sidecar.xmp) : std::string();
}

// ---- Reading ---------------------------------------------------------------------------------------------------------

Target PlaceToRead(const Places& places, const ClipOptions& options) {
    const bool insideSpeaks = Speaks(places.inside, options.rules);
    const bool sidecarSpeaks = Speaks(places.sidecar, options.rules);
    if (insideSpeaks != sidecarSpeaks) {
        return sidecarSpeaks ? Target::Sidecar : Target::Inside;
    }
    if (options.placement != Placement::Auto) {
        return options.placement == Placement::Inside ? Target::Inside : Target::Sidecar;
    }
    const bool hasSidecar = !places.problem.empty() || (places.sidecar && places.sidecar->hasXMP);
    const bool isUnwritten = !places.inside->noExactWay.empty() && (hasSidecar || !places.inside->hasXMP);
    return sidecarSpeaks || isUnwritten ? Target::Sidecar : Target::Inside;
}

// ---- Changing --------------------------------------------------------------------------------------------------------

// Where this place says nothing of the subject, a change is given what the other one says, or it would not know of it.
bool CopySubject(const StatePointer& other, const StatePointer& here, const PlaceRules* rules) {
    if (!Speaks(other, rules) || Speaks(here, rules)) {
        return false;
    }
    rules->subject.Copy(other->xmp, here->xmp);
    return true;
}

// As it was when it was read.
void TakeBack(ClipState& inside) {
    inside.edits.clear();
    inside.notes.clear();
    inside.xmp = SXMPMeta(inside.packet.data(), inside.packet.size());
}

std::string NameFor(const fs::path& list, const fs::path& file) {
    return "the hash list " + list.lexically_relative(file.parent_path()).native();
}

// By its own name and by the one that leads to it, if that is a link: checking a list follows links.
std::optional<SealingList> SealOf(const fs::path& given, const fs::path& file, PlaceRules* rules) {
    if (rules == nullptr) {
        return std::nullopt;
    }
    std::optional<SealingList> seal = rules->lists.Find(file);
    std::error_code error;
    if (!seal && fs::is_symlink(given, error)) {
        const fs::path folder = fs::canonical(given.has_parent_path() ? given.parent_path() : fs::path("."), error);
        seal = error ? std::nullopt : rules->lists.Find(folder / given.filename());
    }
    return seal;
}

std::string ReasonOf(const SealingList& seal, const fs::path& file) {
    return NameFor(seal.path, file) + (seal.problem.empty() ? " names it" : ' ' + seal.problem + ", so may name it");
}

// A file that was changed for the same end before may have been sealed after that, or before.
std::string BrokenSeal(const SealingList& seal, const fs::path& file, const char* what, bool wasChangedBefore) {
    const bool isSure = seal.problem.empty() && !wasChangedBefore;
    return NameFor(seal.path, file) + (isSure ? " no longer holds for " : " may no longer hold for ") + what +
           (isSure ? "; 'zonstory undo' makes it hold again" : "; 'zonstory undo' takes the change back");
}

/// One change of a clip.
class Changing {
public:
    Changing(fs::path clip, const ClipOptions& options)
        : mClip(std::move(clip)), mOptions(options), mRules(options.rules), mPlaces(OpenPlaces(mClip, options)) {}

    StatePointer Run(const Change& change) {
        const bool isInsideFirst = mOptions.placement == Placement::Inside ||
                                   (mOptions.placement == Placement::Auto && !Speaks(mPlaces.sidecar, mRules));
        if (isInsideFirst) {
            try {
                ChangeInside(change);
                return WithOther(std::move(mPlaces.inside), std::move(mPlaces.sidecar));
            } catch (const NoExactWay& reason) {
                if (mOptions.placement == Placement::Inside) {
                    throw ClipError(std::string("cannot be written inside, since ") + reason.what());
                }
                mNotes.push_back(std::string("not written inside, since ") + reason.what());
            }
            TakeBack(*mPlaces.inside);
        }
        if (!ChangeSidecar(change)) {
            return std::move(mPlaces.inside);
        }
        return WithOther(std::move(mPlaces.sidecar), std::move(mPlaces.inside));
    }

    StatePointer Settle(Target place) {
        ReadAllInside();
        const bool isInside = place == Target::Inside;
        SidecarIn(mPlaces);
        StatePointer here = std::move(isInside ? mPlaces.inside : mPlaces.sidecar);
        const StatePointer better = std::move(isInside ? mPlaces.sidecar : mPlaces.inside);
        try {
            Withdraw(*here, *better);
            FinishChange(*here);
        } catch (const NoExactWay& reason) {
            throw ClipError(std::string("cannot be changed inside, since ") + reason.what());
        }
        return here;
    }

private:
    /// @throws NoExactWay
    void ChangeInside(const Change& change) {
        ClipState& inside = *mPlaces.inside;
        if (!inside.noExactWay.empty()) {
            throw NoExactWay(inside.noExactWay);
        }
        const bool wasChangedBefore = Speaks(mPlaces.inside, mRules);
        BeginChange(inside);
        CopySubject(mPlaces.sidecar, mPlaces.inside, mRules);
        change(inside.xmp);
        FinishChange(inside);
        const auto seal = inside.edits.empty() ? std::nullopt : SealOf(mClip, inside.file.Path(), mRules);
        if (seal && mOptions.placement == Placement::Auto) {
            throw NoExactWay(ReasonOf(*seal, inside.file.Path()));
        }
        if (seal) {
            inside.notes.push_back(BrokenSeal(*seal, inside.file.Path(), "it", wasChangedBefore));
        }
        if (!inside.edits.empty() && !mPlaces.problem.empty()) {
            inside.notes.push_back(mPlaces.problem);
        }
    }

    // What is inside a clip of a format that is not written is asked for only where it matters, since the toolkit has to
    // open the clip once more.
    void ReadAllInside() {
        if (!mPlaces.inside->noExactWay.empty() && !mIsAllRead) {
            ReadEmbedded(*mPlaces.inside);
            mIsAllRead = true;
        }
    }

    /// @return false where the inside says it all already.
    bool ChangeSidecar(const Change& change) {
        ClipState& sidecar = SidecarIn(mPlaces);
        if (mRules != nullptr && !Speaks(mPlaces.sidecar, mRules)) {
            ReadAllInside();
        }
        const bool wasChangedBefore = Speaks(mPlaces.sidecar, mRules);
        BeginChange(sidecar);
        const bool isCopied = CopySubject(mPlaces.inside, mPlaces.sidecar, mRules);
        const MetadataContent copied = isCopied ? ContentOf(sidecar.xmp) : MetadataContent();
        change(sidecar.xmp);
        if (isCopied && mOptions.placement == Placement::Auto && ContentOf(sidecar.xmp) == copied) {
            return false;
        }
        FinishChange(sidecar);
        if (!sidecar.edits.empty()) {
            RequireOwnSidecar();
            AddNotes(sidecar, wasChangedBefore);
        }
        return true;
    }

    void RequireOwnSidecar() const {
        const fs::path& sidecar = mPlaces.sidecar->file.Path();
        if (!mPlaces.sidecar->file.Exists() && mOptions.sidecarName == SidecarName::Short &&
            MayBeAnothers(*mPlaces.inside, mOptions)) {
            throw ClipError(sidecar.stem().stem().native() +
                            ".xmp may be another clip's of that name; '--sidecar-name full' tells them apart");
        }
    }

    void AddNotes(ClipState& sidecar, bool wasChangedBefore) {
        sidecar.notes.insert(sidecar.notes.begin(), mNotes.begin(), mNotes.end());
        const fs::path& path = sidecar.file.Path();
        const auto seal = sidecar.file.Exists() ? SealOf(path, path, mRules) : std::nullopt;
        if (seal && seal->problem.empty()) {
            sidecar.notes.push_back(BrokenSeal(*seal, path, "its sidecar", wasChangedBefore));
        }
    }

    void Withdraw(ClipState& here, const ClipState& better) const {
        BeginChange(here);
        mRules->subject.Withdraw(here.xmp, better.xmp);
    }

    // Why the inside of a clip may not be changed beside its sidecar; empty where it may.
    std::string WhyInsideStays(const ClipState& inside) const {
        if (mOptions.placement == Placement::Sidecar) {
            return "a clip stays as it is under '--place sidecar'";
        }
        if (!inside.noExactWay.empty()) {
            return inside.noExactWay;
        }
        const auto seal = SealOf(mClip, inside.file.Path(), mRules);
        return seal ? ReasonOf(*seal, inside.file.Path()) : std::string();
    }

    // The other place has to say the same or nothing, or else the change must not be made.
    StatePointer WithOther(StatePointer here, StatePointer other) {
        if (mRules == nullptr || !other) {
            return here;
        }
        if (other->target == Target::Inside && !other->noExactWay.empty() && !mIsAllRead && !here->edits.empty()) {
            ReadEmbedded(*other);
        }
        if (!Speaks(other, mRules)) {
            return here;
        }
        const SXMPMeta said = other->xmp;
        Withdraw(*other, *here);
        if (ContentOf(other->xmp) == other->before) {
            return here;
        }
        std::string why = other->target == Target::Inside ? WhyInsideStays(*other) : std::string();
        try {
            if (why.empty()) {
                FinishChange(*other);
            }
        } catch (const NoExactWay& reason) {
            why = reason.what();
        }
        if (!why.empty()) {
            other->xmp = said;
            return Beside(std::move(here), *other, why);
        }
        return InOrder(std::move(here), std::move(other));
    }

    // The inside stays as it is.
    StatePointer Beside(StatePointer here, const ClipState& inside, const std::string& why) const {
        const bool isCleared = !mRules->subject.IsIn(here->xmp);
        const std::string contradiction =
            isCleared ? std::string() : mRules->subject.Contradiction(inside.xmp, here->xmp);
        const bool isNeverWritten = !inside.layout && !inside.noExactWay.empty(); // so another program's
        if (isNeverWritten && !contradiction.empty()) {
            here->notes.push_back("says " + contradiction + "; what is inside stays, since " + why);
        } else if (!isNeverWritten && (isCleared || !contradiction.empty())) {
            const char* const hint = inside.noExactWay.empty() ? "; '--place inside' changes it all the same" : "";
            throw ClipError((isCleared ? "would keep what it says inside" : "would say " + contradiction) + ", since " +
                            why + hint);
        }
        return here;
    }

    // What is new goes first, so that it is never lost; what goes away goes first from where it counts less, or the older
    // of two texts might be left as the only one.
    StatePointer InOrder(StatePointer here, StatePointer other) const {
        const bool isCleared = !mRules->subject.IsIn(here->xmp);
        if (isCleared) {
            std::swap(here, other);
        }
        here->leavesOther = !other->edits.empty();
        if (here->leavesOther && !isCleared) {
            here->notes.emplace_back(other->target == Target::Inside ? "what it said inside is taken out"
                                                                     : "what its sidecar said is taken out");
        }
        here->other = std::move(other);
        return here;
    }

    const fs::path mClip;
    const ClipOptions& mOptions;
    PlaceRules* const mRules;
    Places mPlaces;
    bool mIsAllRead = false;
    std::vector<std::string> mNotes;
};

} // namespace

StatePointer LoadClip(const fs::path& clip, const ClipOptions& options) {
    Places places = OpenPlaces(clip, options);
    if (!places.inside->noExactWay.empty()) {
        ReadEmbedded(*places.inside);
    }
    if (PlaceToRead(places, options) == Target::Sidecar) {
        ClipState& sidecar = SidecarIn(places);
        sidecar.contradiction = Contradiction(*places.inside, sidecar, options.rules);
        sidecar.other = std::move(places.inside);
        return std::move(places.sidecar);
    }
    if (!places.problem.empty()) {
        places.inside->notes.push_back(places.problem);
    }
    if (places.sidecar) {
        places.inside->contradiction = Contradiction(*places.inside, *places.sidecar, options.rules);
        places.inside->other = std::move(places.sidecar);
    }
    return std::move(places.inside);
}

StatePointer LoadChanged(const fs::path& clip, const ClipOptions& options, const Change& change) {
    return Changing(clip, options).Run(change);
}

StatePointer LoadSettled(const fs::path& clip, Target place, const ClipOptions& options) {
    return Changing(clip, options).Settle(place);
}

} // namespace zonstory
