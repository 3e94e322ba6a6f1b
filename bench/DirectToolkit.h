#pragma once

#include <string>
#include <vector>

/// The floor under the library's work: the same properties set, the same packet serialized, by bare calls of the
/// toolkit's C interface, with every text at hand in UTF-8.
namespace bench {

struct DirectScene {
    std::string setting, location, timeOfDay, shotName, sceneNumber, seconds, action;
    std::vector<std::pair<std::string, std::string>> dialogue; ///< Speaker and speech.
};

/// The packet of one scene, as a library call makes it.
std::string DirectPacket(const DirectScene& scene);

/// Metadata made once, in which a scene can be written again and again.
class DirectMetadata {
public:
    DirectMetadata();
    DirectMetadata(const DirectMetadata&) = delete;
    DirectMetadata& operator=(const DirectMetadata&) = delete;
    ~DirectMetadata();

    /// Heading, action, and the dialogue in place of what is there.
    void WriteClipProperties(const DirectScene& scene);
    void AppendDialogue(const std::vector<std::pair<std::string, std::string>>& dialogue);
    /// Reads every field of so many items.
    std::size_t ReadDialogue(std::size_t items) const;
    void DeleteDialogue();
    /// Found as the library finds it, by doubling and halving.
    std::size_t CountDialogue() const;

private:
    void* mXMP;
};

} // namespace bench
