#pragma once

#include <atomic>
#include <cstdint>

namespace zelcaptioning {

// The shared base of captions, paragraphs and spans: an intrusive reference
// count. AddRef is the first virtual operation and Release the second; the
// object deletes itself when its last reference is released. Copying an object
// never copies its count.
class RefCounted {
public:
    virtual void AddRef() const noexcept;
    virtual void Release() const noexcept;
    virtual ~RefCounted() = default;

    std::int32_t GetRefCount() const noexcept { return refCount_.load(std::memory_order_relaxed); }

protected:
    RefCounted() = default;
    RefCounted(const RefCounted&) noexcept {}
    RefCounted& operator=(const RefCounted&) noexcept { return *this; }

private:
    mutable std::atomic<std::int32_t> refCount_{0};
};

inline void intrusive_ptr_add_ref(const RefCounted* object) noexcept {
    object->AddRef();
}
inline void intrusive_ptr_release(const RefCounted* object) noexcept {
    object->Release();
}

} // namespace zelcaptioning
