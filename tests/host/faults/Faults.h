#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

/// Programs under the shim that lets their calls on files fail (FaultShim.cpp).
namespace support {

/// A call that was logged, and what it was given.
struct FileCall {
    std::string name;
    std::string subject;
};

inline std::vector<FileCall> CallsIn(const std::filesystem::path& logFile) {
    std::vector<FileCall> calls;
    std::ifstream log(logFile);
    for (FileCall call; log >> call.name && std::getline(log, call.subject);) {
        calls.push_back(call);
    }
    return calls;
}

/// The shim's settings, with what brings it into a program.
inline std::vector<std::string> WithShim(std::vector<std::string> settings) {
    settings.emplace_back("LD_PRELOAD=" FAULT_SHIM);
    settings.emplace_back("ASAN_OPTIONS=verify_asan_link_order=0:detect_leaks=0");
    return settings;
}

} // namespace support
