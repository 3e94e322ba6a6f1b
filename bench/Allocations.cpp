#include "Allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

std::atomic<std::size_t> gCalls{0};
std::atomic<std::size_t> gBytesInUse{0};

} // namespace

void* operator new(std::size_t size) {
    void* const memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    gCalls.fetch_add(1, std::memory_order_relaxed);
    gBytesInUse.fetch_add(malloc_usable_size(memory) + sizeof(std::size_t), std::memory_order_relaxed);
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        gBytesInUse.fetch_sub(malloc_usable_size(memory) + sizeof(std::size_t), std::memory_order_relaxed);
        std::free(memory);
    }
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace bench {

Allocations Allocations::Now() {
    return {gCalls.load(), gBytesInUse.load()};
}

} // namespace bench
