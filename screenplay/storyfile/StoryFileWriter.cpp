#include <algorithm>
#include <stdexcept>

#include <zonscreenplay/Screenplay.h>

namespace zonscreenplay {

std::string WriteStoryFile(const zonstoryparser::Talewright&) {
    throw std::logic_error("not yet");
}

} // namespace zonscreenplay
