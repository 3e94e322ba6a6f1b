#include <zoncore/RefCounted.h>

namespace zoncore {

RefCountedInterface::~RefCountedInterface() = default;
RefCountedObject::~RefCountedObject() = default;

void RefCountedObject::AddRefCount() {
    mRefCount.fetch_add(1, std::memory_order_relaxed);
}

void RefCountedObject::ReleaseRefCount() {
    // Acquire and release: what other owners did with the object happens before it is destroyed.
    const std::int32_t before = mRefCount.fetch_sub(1, std::memory_order_acq_rel);
    if (before == 1 && !mIsDeleting && !mNoDelete) {
        mIsDeleting = true;
        delete this;
    }
}

} // namespace zoncore
