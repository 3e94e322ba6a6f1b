#pragma once

namespace zonstoryparser {

/// Starts the toolkit, which counts its starts, as this does.
/// @return false when it could not start; nothing is counted then.
bool StartToolkit();

/// Takes one start back; the last ends the toolkit. Without a start nothing happens: the toolkit would count below zero
/// and not start again.
void EndToolkit();

/// Whether a call would find the toolkit at work; without its tables it reads through null pointers.
bool IsToolkitRunning();

} // namespace zonstoryparser
