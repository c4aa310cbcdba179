#include "StationRegistry.h"

#include "KSL/Listener.h"

#include <algorithm>

namespace KSL {

StationRegistry& StationRegistry::Instance() {
    static StationRegistry registry;
    return registry;
}

void StationRegistry::Add(const StationID& id, Listener* listener) {
    std::shared_ptr<Station>& station = stations_[id];
    if (!station) {
        station = std::make_shared<Station>();
    }
    if (std::find(station->listeners.begin(), station->listeners.end(), listener) !=
        station->listeners.end()) {
        return;
    }
    station->listeners.push_back(listener);
    if (std::find(listener->stations_.begin(), listener->stations_.end(), id) ==
        listener->stations_.end()) {
        listener->stations_.push_back(id);
    }
}

void StationRegistry::Remove(const StationID& id, Listener* listener) {
    std::erase(listener->stations_, id);
    auto found = stations_.find(id);
    if (found == stations_.end()) {
        return;
    }
    Station& station = *found->second;
    auto slot = std::find(station.listeners.begin(), station.listeners.end(), listener);
    if (slot == station.listeners.end()) {
        return;
    }
    if (station.deliveryDepth > 0) {
        *slot = nullptr;
        station.hasEmptySlots = true;
        return;
    }
    station.listeners.erase(slot);
    if (station.listeners.empty()) {
        stations_.erase(found);
    }
}

bool StationRegistry::Has(const StationID& id, const Listener* listener) const {
    auto found = stations_.find(id);
    if (found == stations_.end() || !listener) {
        return false;
    }
    const auto& listeners = found->second->listeners;
    return std::find(listeners.begin(), listeners.end(), listener) != listeners.end();
}

std::size_t StationRegistry::Count(const StationID& id) const {
    auto found = stations_.find(id);
    if (found == stations_.end()) {
        return 0;
    }
    const auto& listeners = found->second->listeners;
    return listeners.size() -
           static_cast<std::size_t>(std::count(listeners.begin(), listeners.end(), nullptr));
}

void StationRegistry::Broadcast(const StationID& id, const Message& message) {
    auto found = stations_.find(id);
    if (found == stations_.end()) {
        return;
    }
    // Held so that a handler clearing the registry cannot free the station under us.
    std::shared_ptr<Station> station = found->second;
    const std::size_t count = station->listeners.size();
    ++station->deliveryDepth;
    struct DeliveryEnd {
        StationRegistry* registry;
        const StationID& id;
        const std::shared_ptr<Station>& station;
        ~DeliveryEnd() { registry->EndDelivery(id, station); }
    } deliveryEnd{this, id, station};
    for (std::size_t i = 0; i < count; ++i) {
        if (Listener* listener = station->listeners[i]) {
            listener->DispatchMessage(message);
        }
    }
}

void StationRegistry::EndDelivery(const StationID& id, const std::shared_ptr<Station>& station) {
    if (--station->deliveryDepth > 0 || !station->hasEmptySlots) {
        return;
    }
    std::erase(station->listeners, nullptr);
    station->hasEmptySlots = false;
    auto found = stations_.find(id);
    if (station->listeners.empty() && found != stations_.end() && found->second == station) {
        stations_.erase(found);
    }
}

void StationRegistry::Clear() {
    stations_.clear();
}

} // namespace KSL
