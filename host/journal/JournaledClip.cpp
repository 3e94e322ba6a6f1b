#include "journal/JournaledClip.h"

#include <utility>

namespace zonstory {

namespace fs = std::filesystem;

JournaledClip::JournaledClip(JournalWriter& journal, fs::path clip, std::string scene, std::optional<ChangeKey> undoes)
    : mJournal(journal), mClip(std::move(clip)), mScene(std::move(scene)), mUndoes(std::move(undoes)) {}

JournaledClip::~JournaledClip() {
    Settle(false);
}

void JournaledClip::Announce(const UpdateResult& change) {
    Settle(false); // one before it that failed
    ChangeFacts facts;
    facts.scene = mScene;
    facts.target = change.target;
    facts.file = change.file.native();
    std::error_code ignored;
    facts.clip =
        change.target == Target::Inside ? facts.file : fs::weakly_canonical(fs::absolute(mClip), ignored).native();
    facts.back = change.record.Reversed();
    facts.properties = change.properties;
    facts.undoes = mUndoes;
    mAnnounced = mJournal.Announce(std::move(facts));
}

void JournaledClip::Confirm() {
    mJournal.Confirm(*mAnnounced);
}

void JournaledClip::Done() noexcept {
    Settle(true);
}

void JournaledClip::Settle(bool isDone) noexcept {
    if (const auto announced = std::exchange(mAnnounced, std::nullopt)) {
        mJournal.Settle(*announced, isDone);
    }
}

} // namespace zonstory
