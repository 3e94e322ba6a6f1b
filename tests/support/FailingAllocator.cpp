#include "support/FailingAllocator.h"

#include <atomic>
#include <cstddef>
#include <cstring>
#include <new>

#include <dlfcn.h>
#include <unwind.h>

// The linker sends the program's own calls of malloc and its kin to __wrap_..., and has the system's as __real_...
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_realloc(void* memory, std::size_t size);
void __real_free(void* memory);
}

namespace {

std::atomic<long> gLive{0};
std::atomic<long> gToGo{0}; // allocations until one fails; 0 or less when none shall
std::atomic<bool> gForEver{false};
std::atomic<bool> gHasStruck{false};
bool gIsInToolkit = false;

_Unwind_Reason_Code LookAtFrame(_Unwind_Context* frame, void* isInToolkit) {
    Dl_info info;
    const bool isToolkits = ::dladdr(reinterpret_cast<void*>(_Unwind_GetIP(frame)), &info) != 0 &&
                            std::strstr(info.dli_fname, "libexempi") != nullptr;
    *static_cast<bool*>(isInToolkit) |= isToolkits;
    return isToolkits ? _URC_END_OF_STACK : _URC_NO_REASON;
}

bool Strikes() {
    if (gHasStruck && gForEver) {
        return true;
    }
    if (gToGo <= 0 || --gToGo != 0) {
        return false;
    }
    gHasStruck = true;
    gIsInToolkit = false;
    _Unwind_Backtrace(LookAtFrame, &gIsInToolkit);
    return true;
}

void* Allocate(std::size_t size) {
    void* const memory = Strikes() ? nullptr : __real_malloc(size);
    gLive += memory != nullptr ? 1 : 0;
    return memory;
}

void Release(void* memory) {
    gLive -= memory != nullptr ? 1 : 0;
    __real_free(memory);
}

void* AllocateOrThrow(std::size_t size) {
    void* const memory = Allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

extern "C" {
void* __wrap_malloc(std::size_t size) {
    return Allocate(size);
}
void* __wrap_realloc(void* memory, std::size_t size) {
    if (memory == nullptr) {
        return Allocate(size);
    }
    return Strikes() ? nullptr : __real_realloc(memory, size);
}
void __wrap_free(void* memory) {
    Release(memory);
}
}

// What the toolkit, and the XML parser that it alone loads, lose when memory runs out inside it. Our own losses are
// counted where memory runs out outside it.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libexempi\nleak:libexpat.so\n";
}

// All forms: a sanitizer's own would not go with ours.
void* operator new(std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size) {
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return Allocate(size);
}
void operator delete(void* memory) noexcept {
    Release(memory);
}
void operator delete[](void* memory) noexcept {
    Release(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    Release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    Release(memory);
}

namespace support {

MemoryShortage::MemoryShortage(long number, Shortage shortage) {
    gHasStruck = false;
    gForEver = shortage == Shortage::FromThenOn;
    gToGo = number;
}

MemoryShortage::~MemoryShortage() {
    gToGo = 0;
    gForEver = false;
}

bool MemoryShortage::HasStruck() const {
    return gHasStruck;
}

bool MemoryShortage::HasStruckInToolkit() const {
    return gHasStruck && gIsInToolkit;
}

long LiveAllocations() {
    return gLive;
}

} // namespace support
