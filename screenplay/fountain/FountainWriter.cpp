#include <stdexcept>

#include <zonscreenplay/Screenplay.h>

namespace zonscreenplay {

std::string WriteFountain(const Screenplay&) {
    throw std::logic_error("Fountain is not written yet");
}

} // namespace zonscreenplay
