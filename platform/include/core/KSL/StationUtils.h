#pragma once

#include "KSL/ImmutableString.h"

#include <cstddef>
#include <memory>

namespace KSL {

class Listener;
class Message;

// Stations: named fan-outs of messages to listeners, on the UI thread.
namespace StationUtils {

// Adds the listener at the end of the station's delivery order; adding a
// listener that is already there changes nothing. A listener added while the
// station delivers a message receives only later messages.
void AddListener(const StationID& station, Listener* listener);

// Removes the listener; removing one that is not there changes nothing. A
// listener removed while the station delivers a message receives nothing more,
// not even the rest of that delivery.
void RemoveListener(const StationID& station, Listener* listener);

bool HasListener(const StationID& station, const Listener* listener);
std::size_t CountListeners(const StationID& station);

// Delivers the message now to each listener of the station, in the order they
// were added, and returns after the last. A handler's exception stops the
// delivery and passes to the caller.
void BroadcastMessage(const StationID& station, const Message& message);

// Queues the message on the Qt event loop of the UI thread; it is broadcast on
// the station after the current event returns, to the listeners there at that
// time. Callable from any thread once a QCoreApplication exists (throws
// KSL::Exception before). With replacePending, a message with the same id
// still queued for the station takes this one's content and keeps its place
// in the queue, so a burst of posts is delivered once.
void PostMessageToUIThread(const StationID& station, std::shared_ptr<const Message> message,
                           bool replacePending);

} // namespace StationUtils

// Drops every subscription and everything posted but not yet run, messages and
// AsyncCallFromMainThread calls alike. For the host when it closes a project,
// and for tests.
void ResetMessaging();

} // namespace KSL
