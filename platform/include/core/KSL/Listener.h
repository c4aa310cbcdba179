#pragma once

#include "KSL/ImmutableString.h"

#include <vector>

namespace KSL {

class Message;

// Receives the messages broadcast or posted on the stations it is added to
// (StationUtils). A listener is removed from all its stations when destroyed,
// so a station never calls a dead listener, even one destroyed while a message
// is being delivered.
class Listener {
public:
    Listener() = default;
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    virtual ~Listener();

    // Hands the message to HandleMessage; stations call this for each delivery.
    // Returns what the handler returned.
    virtual bool DispatchMessage(const Message& message);

protected:
    // Returns whether the listener recognised the message. Handlers may add and
    // remove listeners, broadcast, and destroy other listeners (not themselves).
    virtual bool HandleMessage(const Message& message) = 0;

private:
    friend class StationRegistry;
    std::vector<StationID> stations_;
};

} // namespace KSL
