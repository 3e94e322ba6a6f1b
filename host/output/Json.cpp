#include "output/Json.h"

#include <nlohmann/json.hpp>

#include "output/SafeText.h"

namespace zonstory {

Json JsonDocument(const char* name, int version) {
    return {{"schema", std::string("zonstory.") + name}, {"version", version}};
}

Json JsonString(std::string_view bytes) {
    return ValidUTF8(bytes);
}

std::string JsonText(const Json& document) {
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + '\n';
}

} // namespace zonstory
