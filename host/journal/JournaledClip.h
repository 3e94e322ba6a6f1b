#pragma once

#include <optional>
#include <string>

#include "clip/Clip.h"
#include "journal/JournalWriter.h"

namespace zonstory {

/// Records the changes of one clip's files while they are made.
class JournaledClip : public ChangeWitness {
public:
    /// @param clip    As the user named it.
    /// @param undoes  What the change takes back; nothing for any other.
    JournaledClip(JournalWriter& journal, std::filesystem::path clip, std::string scene,
                  std::optional<ChangeKey> undoes);
    JournaledClip(const JournaledClip&) = delete;
    JournaledClip& operator=(const JournaledClip&) = delete;
    /// Records of a change that was announced, and did not come to be done, that it failed.
    ~JournaledClip() override;

    void Announce(const UpdateResult& change) override;
    void Confirm() override;
    void Done() noexcept override;

private:
    void Settle(bool isDone) noexcept;

    JournalWriter& mJournal;
    std::filesystem::path mClip;
    std::string mScene;
    std::optional<ChangeKey> mUndoes;
    std::optional<JournalWriter::Announced> mAnnounced;
};

} // namespace zonstory
