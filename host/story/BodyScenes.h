#pragma once

#include <vector>

#include <boost/smart_ptr/intrusive_ptr.hpp>

#include <zonstoryparser/StoryModel.h>

namespace zonstory {

/// The scenes of the screenplay itself, in order: the scene at index 0 has position 1. None of the header's, the
/// footer's and the comments'.
std::vector<boost::intrusive_ptr<zonstoryparser::Scene>> BodyScenes(const zonstoryparser::Talewright& story);

} // namespace zonstory
