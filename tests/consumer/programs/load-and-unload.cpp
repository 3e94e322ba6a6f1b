// Loads a plugin, and the library with it, ten times, for itself alone; each time all of it goes again, also under a thread
// that used it and lives on.
//   load-and-unload PLUGIN
#include <algorithm>
#include <atomic>
#include <cstddef>
#include <fstream>
#include <string>
#include <thread>

#include <dlfcn.h>
#include <malloc.h>

#include "Require.h"

namespace {

struct Footprint {
    std::size_t mappings = 0;
    bool isLibraryMapped = false;
    std::size_t bytesInUse = ::mallinfo2().uordblks;
};

Footprint Measure() {
    Footprint footprint;
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line); ++footprint.mappings) {
        footprint.isLibraryMapped |= line.find("libzon") != std::string::npos;
    }
    return footprint;
}

void LoadUseUnload(const char* path) {
    void* const plugin = ::dlopen(path, RTLD_NOW | RTLD_LOCAL);
    REQUIRE(plugin != nullptr);
    const auto start = reinterpret_cast<bool (*)()>(::dlsym(plugin, "StartToolkit"));
    const auto use = reinterpret_cast<bool (*)()>(::dlsym(plugin, "UseLibrary"));
    const auto end = reinterpret_cast<void (*)()>(::dlsym(plugin, "EndToolkit"));
    REQUIRE(start() && use());
    std::atomic<bool> isUsed{false};
    std::atomic<bool> isUnloaded{false};
    std::thread other([&] {
        REQUIRE(use());
        isUsed = true;
        isUsed.notify_one();
        isUnloaded.wait(false);
    });
    isUsed.wait(false);
    end();
    REQUIRE(Measure().isLibraryMapped);
    REQUIRE(::dlclose(plugin) == 0);
    REQUIRE(!Measure().isLibraryMapped);
    isUnloaded = true;
    isUnloaded.notify_one();
    other.join();
}

} // namespace

int main(int, char** words) {
    std::size_t mappings = 0;
    std::size_t bytesInUse = 0;
    for (int round = 1; round <= 10; ++round) {
        LoadUseUnload(words[1]);
        const Footprint now = Measure();
        if (round <= 3) { // the first leaves the toolkit behind, and the dynamic linker's tables swing a little
            mappings = std::max(mappings, now.mappings);
            bytesInUse = std::max(bytesInUse, now.bytesInUse);
        }
        REQUIRE(now.mappings <= mappings);
        REQUIRE(now.bytesInUse <= bytesInUse);
    }
}
