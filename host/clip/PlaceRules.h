#pragma once

#include <string>

#include <zonstoryparser/XMPToolkit.h>

#include "clip/SharedNames.h"
#include "custody/HashLists.h"

/// What decides between a clip's inside and its sidecar beyond the clip's own bytes.
namespace zonstory {

/// What is to stand in one place, inside a clip or in its sidecar, and never in two that contradict each other. The room
/// of clips does not know what it is; who writes it does. All calls may come on any thread.
class Subject {
public:
    Subject() = default;
    Subject(const Subject&) = delete;
    Subject& operator=(const Subject&) = delete;
    virtual ~Subject() = default;

    /// Whether metadata says anything of it.
    virtual bool IsIn(const SXMPMeta& xmp) const = 0;

    /// Makes `to`, which says nothing of it, say what `from` does.
    virtual void Copy(const SXMPMeta& from, SXMPMeta& to) const = 0;

    /// Takes out of metadata what is said better in the clip's other place: what was written there for this end, and what
    /// contradicts it. What another program wrote and does not contradict it stays.
    /// @param better  The other place's; may say nothing.
    virtual void Withdraw(SXMPMeta& xmp, const SXMPMeta& better) const = 0;

    /// How the two places contradict each other: "scene 12 inside, scene 3 in its sidecar". Empty where they do not.
    virtual std::string Contradiction(const SXMPMeta& inside, const SXMPMeta& sidecar) const = 0;
};

/// The rules of a run, with what it has found out about folders. One for all threads.
struct PlaceRules {
    explicit PlaceRules(const Subject& what) : subject(what) {}

    const Subject& subject;
    HashLists lists;
    SharedNames names;
};

} // namespace zonstory
