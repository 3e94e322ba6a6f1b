#include "CountingParser.h"

#include <algorithm>
#include <cstring>

#include <expat.h>

namespace bench {

namespace {

constexpr std::size_t kPiece = 64 * 1024; // as the program reads

EventCounts& Counts(void* data) {
    return *static_cast<EventCounts*>(data);
}

void XMLCALL Start(void* data, const XML_Char*, const XML_Char** attributes) {
    ++Counts(data).elements;
    for (; *attributes != nullptr; attributes += 2) {
        ++Counts(data).attributes;
    }
}

void XMLCALL End(void*, const XML_Char*) {}

void XMLCALL Text(void* data, const XML_Char*, int length) {
    Counts(data).units += static_cast<std::size_t>(length);
}

} // namespace

EventCounts CountEvents(std::string_view story) {
    EventCounts counts;
    const XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &counts);
    XML_SetElementHandler(parser, &Start, &End);
    XML_SetCharacterDataHandler(parser, &Text);
    for (std::size_t at = 0; at < story.size(); at += kPiece) {
        const std::size_t length = std::min(kPiece, story.size() - at);
        std::memcpy(XML_GetBuffer(parser, static_cast<int>(kPiece)), story.data() + at, length);
        XML_ParseBuffer(parser, static_cast<int>(length), at + length == story.size() ? 1 : 0);
    }
    XML_ParserFree(parser);
    return counts;
}

} // namespace bench
