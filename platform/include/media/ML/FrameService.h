#pragma once

#include "BE/MasterClipSettings.h"
#include "ML/FrameRequest.h"
#include "zelmediatypes/TickTime.h"

#include <cstddef>
#include <cstdint>

namespace ML {

struct FrameServiceOptions {
    // Decoding threads. Each decodes one request at a time, single-threaded.
    int workerThreadCount = 2;
    // Decoded frames kept for repeated requests, least recently used dropped first.
    std::size_t cacheBudgetBytes = std::size_t{128} << 20;
    // Media files whose demuxer and decoder stay open between requests.
    std::size_t maxOpenMediaCount = 8;
};

struct FrameServiceStatistics {
    std::uint64_t cacheHits = 0;
    // Exact frames made by decoding a file or drawing a generated test source.
    std::uint64_t framesRendered = 0;
    std::size_t cachedFrameCount = 0;
    std::size_t cachedBytes = 0;
};

// The process's video frame service: decodes frames of clips' media on worker threads and
// posts each result as an ML::RenderFrameCompletionMessage on kStation_RenderFrameCompletion
// (ML/RenderFrameCompletionMessage.h).
//
// The host starts it after creating its QCoreApplication and shuts it down before the
// application goes; nothing else starts or stops it. All functions are thread-safe.
class FrameService {
public:
    // Throws KSL::Exception when the service is already running or an option is out of range.
    static void Start(const FrameServiceOptions& options = {});

    // Stops and joins the workers, drops the requests not yet done, the cache and the open
    // media. Messages already posted are still delivered. Does nothing when not running; the
    // service may be started again afterwards.
    static void Shutdown();

    static bool IsRunning();

    // Asks for the frame of the clip's media showing `time` (from the start of the clip's
    // media; clamped into the clip's duration when it has one), scaled to `size`, and returns
    // at once. The answer is posted even when it is already cached. A generated test source
    // draws colour bars with the frame's timecode; a media file is decoded, and when it is
    // missing or unreadable the answer is an error frame. Throws KSL::Exception when the
    // service is not running or `size` is negative or only half given.
    static RequestID RequestFrame(const BE::MasterClipSettings& clip, zelmediatypes::TickTime time,
                                  FrameSize size, Refinement refinement);

    // Forgets a request not yet done: nothing more is delivered for it, except a message that
    // was posted before the call. Unknown and finished ids are ignored.
    static void CancelRequest(RequestID requestID);

    // Zero counts when not running.
    static FrameServiceStatistics GetStatistics();
};

} // namespace ML
