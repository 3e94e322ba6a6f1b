#pragma once

namespace zonstory {

/// The XMP toolkit, running as long as this object lives. Made by a command that needs it, before any SXMPMeta: reading
/// a story does not.
class Toolkit {
public:
    /// @throws std::runtime_error when the toolkit does not start.
    Toolkit();
    Toolkit(const Toolkit&) = delete;
    Toolkit& operator=(const Toolkit&) = delete;
    ~Toolkit();
};

} // namespace zonstory
