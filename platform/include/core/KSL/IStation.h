#pragma once

#include "KSL/IObject.h"
#include "KSL/ImmutableString.h"
#include "KSL/InterfaceRef.h"

namespace KSL {

// An object that announces its own changes on a station of its own.
class IStation : public IObject {
public:
    static constexpr const char* kInterfaceID = "{66E4C8B0-23F6-4471-AECC-FC567D40FF1D}";

    virtual StationID GetStationID() const = 0;
};

// The station of the object, or a null StationID when it has none.
template <typename T> StationID StationOf(const InterfaceRef<T>& object) {
    const InterfaceRef<IStation> station = object.template QueryInterface<IStation>();
    return station ? station->GetStationID() : StationID();
}

} // namespace KSL
