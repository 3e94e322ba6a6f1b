#pragma once

namespace zonstoryparser {

/// While one lives, what the current thread writes to std::cerr is dropped.
///
/// The toolkit prints the text of every error to std::cerr, and offers no way to stop it. Many of its errors cannot be
/// foreseen without doing its work twice, and those of damaged packets and files not at all. Other threads' output
/// passes through, and no buffer stays behind in std::cerr between calls. May be nested; an inner one costs next to
/// nothing.
class ToolkitSilence {
public:
    ToolkitSilence();
    ToolkitSilence(const ToolkitSilence&) = delete;
    ToolkitSilence& operator=(const ToolkitSilence&) = delete;
    ~ToolkitSilence();
};

} // namespace zonstoryparser
