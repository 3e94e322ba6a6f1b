#include "fountain/FountainReader.h"

namespace zonscreenplay {

void ReadFountain(std::string_view, const ReadOptions&, ScriptBuilder& builder) {
    builder.Fail({1, 1}, "Fountain is not read yet");
}

} // namespace zonscreenplay
