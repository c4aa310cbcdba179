#include "zelcaptioning/RefCounted.h"

namespace zelcaptioning {

void RefCounted::AddRef() const noexcept {
    refCount_.fetch_add(1, std::memory_order_relaxed);
}

void RefCounted::Release() const noexcept {
    if (refCount_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete this;
    }
}

} // namespace zelcaptioning
