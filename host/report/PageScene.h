#pragma once

#include <string>
#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include "report/Page.h"
#include "report/SceneLight.h"
#include "story/SceneFacts.h"

namespace zonstory {

/// A scene with what several parts of the page say of it.
struct PageScene {
    boost::intrusive_ptr<zonstoryparser::Scene> scene;
    SceneFacts facts;
    std::string heading; ///< UTF-8; of a scene without one, in words that say so.
    SceneLight light;
    std::vector<std::size_t> clips;

    std::string Label() const; ///< "12A", or "#7" for the seventh scene where it has no number.
    std::string Link() const;  ///< "#scene-7"
    bool IsBare() const { return clips.empty() && !facts.properties.omitted; }
};

std::vector<PageScene> PageScenes(const PageInput& input);

/// The length by which scenes are compared: in eighths of a page where the story tells them of any, else in words.
struct LengthMeasure {
    explicit LengthMeasure(const std::vector<PageScene>& scenes);
    std::size_t Of(const PageScene& scene) const;
    std::string Text(std::size_t length) const;

    bool isInEighths = false;
    const char* title; ///< Over a column.
};

} // namespace zonstory
