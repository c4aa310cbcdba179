#pragma once

#include <atomic>

namespace platform::core {

// Implements the counting of KSL::IObject for a class implementing one or more
// host interfaces; the last Release deletes the object.
template <typename... Interfaces> class RefCountedObject : public Interfaces... {
public:
    void AddRef() const noexcept override { refs_.fetch_add(1, std::memory_order_relaxed); }
    void Release() const noexcept override {
        if (refs_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete this;
        }
    }

protected:
    RefCountedObject() = default;
    ~RefCountedObject() override = default;

private:
    mutable std::atomic<int> refs_{0};
};

} // namespace platform::core
