#pragma once

#include "KSL/Listener.h"
#include "KSL/Message.h"

#include <chrono>
#include <functional>
#include <vector>

namespace platform_test {

// Drops subscriptions, posted work and the current project.
void ResetHostState();

// Runs the Qt event loop until nothing posted is left or the time is up.
void RunEventLoopFor(std::chrono::milliseconds duration);
void RunPostedWork();

// Records the id of every message it receives, and runs an optional reaction.
class RecordingListener : public KSL::Listener {
public:
    std::vector<KSL::MessageID> received;
    std::function<void(const KSL::Message&)> onMessage;

protected:
    bool HandleMessage(const KSL::Message& message) override {
        received.push_back(message.GetMessageID());
        if (onMessage) {
            onMessage(message);
        }
        return true;
    }
};

} // namespace platform_test
