#pragma once

#include <cstddef>
#include <functional>
#include <type_traits>
#include <utility>

namespace KSL {

// A counted reference to a host interface (IObject or derived). Equality and
// ordering compare the referenced interface pointers, so two references to the
// same object through the same interface are equal.
template <typename T> class InterfaceRef {
public:
    InterfaceRef() noexcept = default;
    InterfaceRef(std::nullptr_t) noexcept {}

    // Takes a new reference to the object.
    explicit InterfaceRef(T* object) noexcept
        : object_(object) {
        AddRef();
    }

    InterfaceRef(const InterfaceRef& other) noexcept
        : object_(other.object_) {
        AddRef();
    }
    InterfaceRef(InterfaceRef&& other) noexcept
        : object_(std::exchange(other.object_, nullptr)) {}

    template <typename U>
    requires std::is_convertible_v<U*, T*> InterfaceRef(const InterfaceRef<U>& other)
    noexcept
        : object_(other.Get()) {
        AddRef();
    }

    InterfaceRef& operator=(InterfaceRef other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }

    ~InterfaceRef() { Reset(); }

    void Reset() noexcept {
        if (T* old = std::exchange(object_, nullptr)) {
            old->Release();
        }
    }

    T* Get() const noexcept { return object_; }
    T* operator->() const noexcept { return object_; }
    T& operator*() const noexcept { return *object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    // The same object's interface U, or an empty reference when it has none.
    template <typename U> InterfaceRef<U> QueryInterface() const noexcept {
        if (!object_) {
            return {};
        }
        return InterfaceRef<U>(static_cast<U*>(object_->QueryInterface(U::kInterfaceID)));
    }

    friend bool operator==(const InterfaceRef& a, const InterfaceRef& b) noexcept {
        return a.object_ == b.object_;
    }
    friend bool operator<(const InterfaceRef& a, const InterfaceRef& b) noexcept {
        return std::less<T*>()(a.object_, b.object_);
    }

private:
    void AddRef() noexcept {
        if (object_) {
            object_->AddRef();
        }
    }

    T* object_ = nullptr;
};

} // namespace KSL

template <typename T> struct std::hash<KSL::InterfaceRef<T>> {
    std::size_t operator()(const KSL::InterfaceRef<T>& r) const noexcept {
        return std::hash<T*>()(r.Get());
    }
};
