#include "cli/Program.h"

int main(int argc, char** argv) {
    return zonstory::RunProgram(argc, argv);
}
