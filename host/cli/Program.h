#pragma once

namespace zonstory {

/// Runs the program.
/// @return An ExitCode. Ended by a signal, it does not return: it dies of that signal once all is cleaned up, so that a
///         shell's loop ends too.
int RunProgram(int argc, char** argv);

} // namespace zonstory
