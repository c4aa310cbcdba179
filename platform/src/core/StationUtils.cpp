#include "KSL/StationUtils.h"

#include "KSL/Exception.h"
#include "KSL/Message.h"
#include "MainThreadQueue.h"
#include "StationRegistry.h"

#include <map>
#include <mutex>
#include <utility>

namespace KSL {
namespace {

// Posts queued with replacePending that have not been delivered yet, by
// station and message id; a later post replaces the held message.
struct PendingPosts {
    std::mutex mutex;
    std::map<std::pair<StationID, MessageID>, std::shared_ptr<const Message>> byKey;
};

PendingPosts& Pending() {
    static PendingPosts pending;
    return pending;
}

} // namespace

namespace StationUtils {

void AddListener(const StationID& station, Listener* listener) {
    StationRegistry::Instance().Add(station, listener);
}

void RemoveListener(const StationID& station, Listener* listener) {
    StationRegistry::Instance().Remove(station, listener);
}

bool HasListener(const StationID& station, const Listener* listener) {
    return StationRegistry::Instance().Has(station, listener);
}

std::size_t CountListeners(const StationID& station) {
    return StationRegistry::Instance().Count(station);
}

void BroadcastMessage(const StationID& station, const Message& message) {
    StationRegistry::Instance().Broadcast(station, message);
}

void PostMessageToUIThread(const StationID& station, std::shared_ptr<const Message> message,
                           bool replacePending) {
    if (!message) {
        throw Exception("PostMessageToUIThread needs a message");
    }
    if (!replacePending) {
        platform::core::MainThreadQueue::Post([station, message = std::move(message)] {
            StationRegistry::Instance().Broadcast(station, *message);
        });
        return;
    }
    auto key = std::make_pair(station, message->GetMessageID());
    {
        std::lock_guard lock(Pending().mutex);
        auto [slot, inserted] = Pending().byKey.try_emplace(key, message);
        if (!inserted) {
            slot->second = std::move(message);
            return;
        }
    }
    auto deliverLatest = [key] {
        std::shared_ptr<const Message> latest;
        {
            std::lock_guard lock(Pending().mutex);
            auto slot = Pending().byKey.find(key);
            if (slot == Pending().byKey.end()) {
                return;
            }
            latest = std::move(slot->second);
            Pending().byKey.erase(slot);
        }
        StationRegistry::Instance().Broadcast(key.first, *latest);
    };
    try {
        platform::core::MainThreadQueue::Post(std::move(deliverLatest));
    } catch (...) {
        std::lock_guard lock(Pending().mutex);
        Pending().byKey.erase(key);
        throw;
    }
}

} // namespace StationUtils

void ResetMessaging() {
    StationRegistry::Instance().Clear();
    platform::core::MainThreadQueue::CancelPending();
    std::lock_guard lock(Pending().mutex);
    Pending().byKey.clear();
}

} // namespace KSL
