#include "Allocations.h"

#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

bool gCounts = false; // one thread measures
bench::Allocations gAllocations;

std::ptrdiff_t SizeOf(void* memory) {
    return static_cast<std::ptrdiff_t>(malloc_usable_size(memory) + sizeof(std::size_t));
}

} // namespace

void* operator new(std::size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    if (gCounts) {
        ++gAllocations.calls;
        gAllocations.bytesLeft += SizeOf(memory);
    }
    return memory;
}

void operator delete(void* memory) noexcept {
    if (gCounts && memory != nullptr) {
        gAllocations.bytesLeft -= SizeOf(memory);
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace bench {

Allocations Allocations::During(const std::function<void()>& step) {
    gAllocations = {};
    gCounts = true;
    step();
    gCounts = false;
    return gAllocations;
}

} // namespace bench
