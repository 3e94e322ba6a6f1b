#include "toolkit/KnownPrefix.h"

#include <atomic>
#include <cstring>
#include <iterator>
#include <string_view>

#include <zonstoryparser/XMPToolkit.h>

namespace zonstoryparser {

namespace {

std::atomic<unsigned> gToolkitRuns{1};

// Plain bytes: a thread's memory must need no destructor, so that the library can be unloaded before the thread ends.
struct Memory {
    unsigned toolkitRun;
    char namespaceURI[120];
    char prefix[40];
};
thread_local Memory tMemories[3]; // as many as the library has namespaces
thread_local unsigned tNextMemory;

template <std::size_t Size>
void Remember(char (&place)[Size], std::string_view text) {
    std::memcpy(place, text.data(), text.size());
    place[text.size()] = '\0';
}

// Longer ones are looked up each time; none in use is.
bool Fits(std::string_view namespaceURI, std::string_view prefix) {
    return namespaceURI.size() < sizeof Memory::namespaceURI && prefix.size() < sizeof Memory::prefix;
}

} // namespace

std::string KnownPrefix(const char* namespaceURI) {
    const unsigned run = gToolkitRuns.load(std::memory_order_relaxed);
    if (namespaceURI == nullptr) {
        return {};
    }
    for (const Memory& memory : tMemories) {
        if (memory.toolkitRun == run && std::strcmp(memory.namespaceURI, namespaceURI) == 0) {
            return memory.prefix;
        }
    }
    std::string prefix;
    if (SXMPMeta::GetNamespacePrefix(namespaceURI, &prefix) && Fits(namespaceURI, prefix)) {
        Memory& memory = tMemories[tNextMemory++ % std::size(tMemories)];
        Remember(memory.namespaceURI, namespaceURI);
        Remember(memory.prefix, prefix);
        memory.toolkitRun = run;
    }
    return prefix;
}

void ForgetKnownPrefixes() {
    gToolkitRuns.fetch_add(1, std::memory_order_relaxed);
}

} // namespace zonstoryparser
