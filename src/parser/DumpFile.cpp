#include "parser/DumpFile.h"

#include <cstdio>
#include <memory>

#include <zoncore/FileSupport.h>

namespace zonstoryparser {

void ReplaceDumpFile(const zoncore::UString& path, const std::string& bytes) {
    zoncore::File(path).Delete(); // of an earlier dump, if there was one
    // "x": fails when anything is at the path again, a dangling link included. "e": no program that the host starts
    // meanwhile inherits it.
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(zoncore::UTF16to8(path).c_str(), "wxe"),
                                                               &std::fclose);
    if (file) {
        std::fwrite(bytes.data(), 1, bytes.size(), file.get());
    }
}

} // namespace zonstoryparser
