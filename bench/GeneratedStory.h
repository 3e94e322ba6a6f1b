#pragma once

#include <cstddef>
#include <vector>

#include "DirectToolkit.h"
#include <zonscreenplay/Screenplay.h>

namespace bench {

/// A generated story of so many scenes: as the model, and as the texts that the library makes of it.
struct GeneratedStory {
    explicit GeneratedStory(std::size_t scenes);

    const std::vector<boost::intrusive_ptr<zonstoryparser::Scene>>& Scenes() const;

    zonscreenplay::Screenplay story;
    std::vector<DirectScene> direct;
};

} // namespace bench
