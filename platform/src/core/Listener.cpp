#include "KSL/Listener.h"

#include "StationRegistry.h"

namespace KSL {

Listener::~Listener() {
    const std::vector<StationID> stations = stations_;
    for (const StationID& station : stations) {
        StationRegistry::Instance().Remove(station, this);
    }
}

bool Listener::DispatchMessage(const Message& message) {
    return HandleMessage(message);
}

} // namespace KSL
