#pragma once

#include <atomic>
#include <cstdint>

#include <zoncore/Export.h>

namespace zoncore {

/// Something that counts its owners and destroys itself with the last of them.
///
/// The order of the operations is the order of their slots in the virtual table and never changes.
class ZONCORE_API RefCountedInterface {
public:
    virtual void AddRefCount() = 0;
    virtual void ReleaseRefCount() = 0;
    virtual ~RefCountedInterface();
};

/// The count itself. Objects are made with `new` and handed straight to a `boost::intrusive_ptr`; a new object has the
/// count 0. The count is changed atomically, so handles to one object may be copied and dropped on any thread; the
/// object's other data is not protected.
class ZONCORE_API RefCountedObject : public virtual RefCountedInterface {
public:
    RefCountedObject() = default;
    RefCountedObject(const RefCountedObject&) = delete;
    RefCountedObject& operator=(const RefCountedObject&) = delete;
    ~RefCountedObject() override;

    void AddRefCount() override;

    /// Drops one reference. The object is destroyed when the count was exactly 1 and neither flag is set.
    void ReleaseRefCount() override;

private:
    std::atomic<std::int32_t> mRefCount{0};
    bool mIsDeleting = false; // set before destruction starts, so a release during destruction never deletes again
    bool mNoDelete = false;   // reserved for objects that live elsewhere than on the heap; nothing here sets it
};

/// What `boost::intrusive_ptr` calls, found by argument-dependent lookup through the base class.
inline void intrusive_ptr_add_ref(RefCountedInterface* object) {
    object->AddRefCount();
}
inline void intrusive_ptr_release(RefCountedInterface* object) {
    object->ReleaseRefCount();
}

} // namespace zoncore
