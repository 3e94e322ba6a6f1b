// Writes the man page and the completion scripts into a folder; run by the build, never installed.
#include <exception>
#include <filesystem>
#include <iostream>

#include <CLI/App.hpp>

#include "cli/Completion.h"
#include "cli/ManPage.h"
#include "cli/OptionTree.h"
#include "commands/Schemas.h"
#include "files/AtomicFile.h"

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: zonstory_docs FOLDER\n";
        return 2;
    }
    zonstory::Invocation ignored;
    const auto program = zonstory::MakeOptionTree(ignored);
    const std::filesystem::path folder = argv[1];
    zonstory::WriteFileAtomically(folder / "zonstory.1", zonstory::ManPage(*program));
    zonstory::WriteFileAtomically(folder / "zonstory.bash", zonstory::BashCompletion(*program));
    zonstory::WriteFileAtomically(folder / "_zonstory", zonstory::ZshCompletion(*program));
    zonstory::WriteFileAtomically(folder / "zonstory.fish", zonstory::FishCompletion(*program));
    for (const auto& [name, schema] : zonstory::Schemas()) {
        zonstory::WriteFileAtomically(folder / name, schema);
    }
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
