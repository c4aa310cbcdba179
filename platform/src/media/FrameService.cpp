#include "ML/FrameService.h"

#include "FrameRenderer.h"
#include "KSL/Exception.h"

#include <memory>
#include <mutex>

namespace ML {
namespace {

struct Service {
    std::mutex mutex;
    std::unique_ptr<platform::media::FrameRenderer> renderer;
};

Service& TheService() {
    static Service service;
    return service;
}

} // namespace

void FrameService::Start(const FrameServiceOptions& options) {
    std::lock_guard lock(TheService().mutex);
    if (TheService().renderer) {
        throw KSL::Exception("the frame service is already running");
    }
    TheService().renderer = std::make_unique<platform::media::FrameRenderer>(options);
}

void FrameService::Shutdown() {
    std::unique_ptr<platform::media::FrameRenderer> stopping;
    {
        std::lock_guard lock(TheService().mutex);
        stopping = std::move(TheService().renderer);
    }
    // Joined outside the lock: a worker finishing its request must not wait on a caller here.
    stopping.reset();
}

bool FrameService::IsRunning() {
    std::lock_guard lock(TheService().mutex);
    return TheService().renderer != nullptr;
}

RequestID FrameService::RequestFrame(const BE::MasterClipSettings& clip,
                                     zelmediatypes::TickTime time, FrameSize size,
                                     Refinement refinement) {
    std::lock_guard lock(TheService().mutex);
    if (!TheService().renderer) {
        throw KSL::Exception("frame requested while the frame service is not running");
    }
    return TheService().renderer->Request(clip, time, size, refinement);
}

void FrameService::CancelRequest(RequestID requestID) {
    std::lock_guard lock(TheService().mutex);
    if (TheService().renderer) {
        TheService().renderer->Cancel(requestID);
    }
}

FrameServiceStatistics FrameService::GetStatistics() {
    std::lock_guard lock(TheService().mutex);
    return TheService().renderer ? TheService().renderer->GetStatistics()
                                 : FrameServiceStatistics{};
}

} // namespace ML
