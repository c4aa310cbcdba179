#pragma once

#include <string_view>

namespace KSL {

// The root of every host interface: a counted object that can be asked for its
// other interfaces. An interface class names itself with
//   static constexpr const char* kInterfaceID = "{GUID}";
// Counting is thread-safe; everything else about host objects is UI-thread only.
class IObject {
public:
    virtual void AddRef() const noexcept = 0;
    virtual void Release() const noexcept = 0;

    // The object's implementation of the interface with that id, or null. The
    // pointer is uncounted: wrap it in an InterfaceRef (see QueryInterface).
    virtual void* QueryInterface(std::string_view interfaceID) const noexcept = 0;

protected:
    virtual ~IObject() = default;
};

} // namespace KSL
