#pragma once

#include "KSL/ImmutableString.h"

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

namespace KSL {

class Listener;
class Message;

// The process's stations and their listeners (UI thread only). A station exists
// while it has listeners. During a delivery a removed listener leaves a null
// slot, so indices stay valid; the slots are compacted when the outermost
// delivery on that station ends.
class StationRegistry {
public:
    static StationRegistry& Instance();

    void Add(const StationID& station, Listener* listener);
    void Remove(const StationID& station, Listener* listener);
    bool Has(const StationID& station, const Listener* listener) const;
    std::size_t Count(const StationID& station) const;
    void Broadcast(const StationID& station, const Message& message);
    void Clear();

private:
    struct Station {
        std::vector<Listener*> listeners;
        int deliveryDepth = 0;
        bool hasEmptySlots = false;
    };

    void EndDelivery(const StationID& id, const std::shared_ptr<Station>& station);

    std::unordered_map<StationID, std::shared_ptr<Station>> stations_;
};

} // namespace KSL
