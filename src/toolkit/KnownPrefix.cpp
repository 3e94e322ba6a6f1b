#include "toolkit/KnownPrefix.h"

#include <atomic>
#include <cstring>
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
thread_local Memory tMemory;

template <std::size_t Size>
void Remember(char (&place)[Size], std::string_view text) {
    std::memcpy(place, text.data(), text.size());
    place[text.size()] = '\0';
}

// Longer ones are looked up each time; none in use is.
bool Fits(std::string_view namespaceURI, std::string_view prefix) {
    return namespaceURI.size() < sizeof tMemory.namespaceURI && prefix.size() < sizeof tMemory.prefix;
}

} // namespace

std::string KnownPrefix(const char* namespaceURI) {
    const unsigned run = gToolkitRuns.load(std::memory_order_relaxed);
    if (namespaceURI == nullptr) {
        return {};
    }
    if (tMemory.toolkitRun == run && std::strcmp(tMemory.namespaceURI, namespaceURI) == 0) {
        return tMemory.prefix;
    }
    std::string prefix;
    if (SXMPMeta::GetNamespacePrefix(namespaceURI, &prefix) && Fits(namespaceURI, prefix)) {
        Remember(tMemory.namespaceURI, namespaceURI);
        Remember(tMemory.prefix, prefix);
        tMemory.toolkitRun = run;
    }
    return prefix;
}

void ForgetKnownPrefixes() {
    gToolkitRuns.fetch_add(1, std::memory_order_relaxed);
}

} // namespace zonstoryparser
