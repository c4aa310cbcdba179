#pragma once

#include "BE/MasterClipSettings.h"
#include "FrameCache.h"
#include "FrameJob.h"
#include "FrameJobQueue.h"
#include "ML/FrameService.h"
#include "OpenMediaTable.h"
#include "VF/VideoFrame.h"

#include <atomic>
#include <cstdint>
#include <thread>
#include <vector>

namespace platform::media {

// The running frame service behind ML::FrameService: answers requests from the cache or queues
// them for its worker threads, which draw or decode the frame, cache it and post the
// completion message.
class FrameRenderer {
public:
    // Starts the workers. Throws KSL::Exception for options out of range.
    explicit FrameRenderer(const ML::FrameServiceOptions& options);
    FrameRenderer(const FrameRenderer&) = delete;
    FrameRenderer& operator=(const FrameRenderer&) = delete;
    // Drops the waiting requests, stops the running ones between packets and joins the workers.
    ~FrameRenderer();

    ML::RequestID Request(const BE::MasterClipSettings& clip, zelmediatypes::TickTime time,
                          ML::FrameSize size, ML::Refinement refinement);
    void Cancel(ML::RequestID requestID);
    ML::FrameServiceStatistics GetStatistics() const;

private:
    void RunWorker();
    void Run(const FrameJob& job);
    VF::VideoFrame Render(const FrameJob& job);
    VF::VideoFrame DecodeFile(const FrameJob& job);
    void Deliver(ML::RequestID requestID, VF::VideoFrameRef frame, bool isFinal);

    FrameCache cache_;
    OpenMediaTable media_;
    FrameJobQueue queue_;
    std::atomic<std::uint64_t> cacheHits_{0};
    std::atomic<std::uint64_t> framesRendered_{0};
    std::vector<std::thread> workers_;
};

} // namespace platform::media
