#include "FrameRenderer.h"

#include "KSL/Exception.h"
#include "KSL/StationUtils.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MediaError.h"
#include "TestSourceRenderer.h"

#include <algorithm>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace platform::media {
namespace {

// Ids stay unique across restarts of the service, so a late message of a shut-down service
// never matches a new request.
std::atomic<ML::RequestID> gNextRequestID{1};

constexpr int kMaxWorkerThreadCount = 16;

std::string MediaIdentity(const BE::MasterClipSettings& clip) {
    if (clip.media.kind == BE::MediaSource::Kind::kFile) {
        return "file:" + clip.media.filePathUtf8;
    }
    // Everything a generated picture depends on besides its time and size.
    return "generated:" + std::to_string(clip.frameRate.FramesPerSecondNumerator()) + "/" +
           std::to_string(clip.frameRate.FramesPerSecondDenominator());
}

void CheckSize(ML::FrameSize size) {
    const auto inRange = [](int px) {
        return px > 0 && px <= VF::VideoFrame::kMaxDimensionPx;
    };
    if (!size.IsMediaSize() && !(inRange(size.widthPx) && inRange(size.heightPx))) {
        throw KSL::Exception("a frame request needs a size of 1 to 16384 pixels each way, or 0 x 0 "
                             "for the media's own size");
    }
}

// The size a generated frame is drawn at, and the size its cache entry is filed under.
ML::FrameSize ResolveSize(const BE::MasterClipSettings& clip, ML::FrameSize size) {
    if (size.IsMediaSize() && clip.media.kind == BE::MediaSource::Kind::kGeneratedTestSource) {
        return {std::max(clip.frameRect.Width(), 0), std::max(clip.frameRect.Height(), 0)};
    }
    return size;
}

zelmediatypes::TickTime ClampIntoClip(const BE::MasterClipSettings& clip,
                                      zelmediatypes::TickTime time) {
    const zelmediatypes::TickTime lastTick = clip.duration - zelmediatypes::TickTime(1);
    if (clip.duration > zelmediatypes::kTime_Zero && time > lastTick) {
        time = lastTick;
    }
    return std::max(time, zelmediatypes::kTime_Zero);
}

} // namespace

FrameRenderer::FrameRenderer(const ML::FrameServiceOptions& options)
    : cache_(options.cacheBudgetBytes)
    , media_(options.maxOpenMediaCount) {
    if (options.workerThreadCount < 1 || options.workerThreadCount > kMaxWorkerThreadCount ||
        options.maxOpenMediaCount < 1) {
        throw KSL::Exception("the frame service needs 1 to 16 worker threads and at least one "
                             "open media file");
    }
    for (int i = 0; i < options.workerThreadCount; ++i) {
        workers_.emplace_back([this] { RunWorker(); });
    }
}

FrameRenderer::~FrameRenderer() {
    queue_.Close();
    for (std::thread& worker : workers_) {
        worker.join();
    }
}

ML::RequestID FrameRenderer::Request(const BE::MasterClipSettings& clip,
                                     zelmediatypes::TickTime time, ML::FrameSize size,
                                     ML::Refinement refinement) {
    CheckSize(size);
    const zelmediatypes::TickTime frameStart =
        ClampIntoClip(clip, time).AlignToFrame(clip.frameRate);
    const ML::FrameSize resolvedSize = ResolveSize(clip, size);
    FrameJob job{gNextRequestID++,
                 clip,
                 frameStart,
                 resolvedSize,
                 refinement,
                 FrameCacheKey{MediaIdentity(clip), frameStart.GetTicks(), resolvedSize.widthPx,
                               resolvedSize.heightPx}};
    if (VF::VideoFrameRef cached = cache_.Find(job.cacheKey)) {
        ++cacheHits_;
        KSL::StationUtils::PostMessageToUIThread(ML::kStation_RenderFrameCompletion,
                                                 std::make_shared<ML::RenderFrameCompletionMessage>(
                                                     job.requestID, std::move(cached), true),
                                                 false);
        return job.requestID;
    }
    const ML::RequestID requestID = job.requestID;
    queue_.Push(std::move(job));
    return requestID;
}

void FrameRenderer::Cancel(ML::RequestID requestID) {
    queue_.Cancel(requestID);
}

ML::FrameServiceStatistics FrameRenderer::GetStatistics() const {
    return {cacheHits_.load(), framesRendered_.load(), cache_.GetFrameCount(), cache_.GetBytes()};
}

void FrameRenderer::RunWorker() {
    while (std::optional<FrameJob> job = queue_.Pop()) {
        Run(*job);
        queue_.Finish(job->requestID);
    }
}

void FrameRenderer::Run(const FrameJob& job) {
    // An identical request may have been answered while this one waited.
    if (VF::VideoFrameRef cached = cache_.Find(job.cacheKey)) {
        ++cacheHits_;
        Deliver(job.requestID, std::move(cached), true);
        return;
    }
    VF::VideoFrameRef frame;
    try {
        frame = std::make_shared<const VF::VideoFrame>(Render(job));
        ++framesRendered_;
        cache_.Insert(job.cacheKey, frame);
    } catch (const DecodeCancelled&) {
        return;
    } catch (const MediaError& error) {
        frame = std::make_shared<const VF::VideoFrame>(VF::VideoFrame::MakeError(error.what()));
    } catch (const std::exception& error) {
        frame = std::make_shared<const VF::VideoFrame>(VF::VideoFrame::MakeError(
            "A frame of " + job.cacheKey.mediaIdentity + " could not be made: " + error.what()));
    }
    Deliver(job.requestID, std::move(frame), true);
}

VF::VideoFrame FrameRenderer::Render(const FrameJob& job) {
    if (job.clip.media.kind == BE::MediaSource::Kind::kFile) {
        return DecodeFile(job);
    }
    if (job.size.widthPx <= 0 || job.size.heightPx <= 0) {
        throw MediaError("The generated test source has no frame size to draw at");
    }
    return TestSourceRenderer::Render(job.frameStart, job.clip.frameRate, job.size.widthPx,
                                      job.size.heightPx);
}

VF::VideoFrame FrameRenderer::DecodeFile(const FrameJob& job) {
    if (job.clip.media.filePathUtf8.empty()) {
        throw MediaError("The clip names no media file");
    }
    std::shared_ptr<MediaDecoder> decoder = media_.Acquire(job.clip.media.filePathUtf8);
    std::lock_guard lock(decoder->GetMutex());
    MediaDecoder::KeyframeSink keyframeSink;
    if (job.refinement == ML::Refinement::kKeyframeFirst) {
        keyframeSink = [this, &job](VF::VideoFrame preview) {
            Deliver(job.requestID, std::make_shared<const VF::VideoFrame>(std::move(preview)),
                    false);
        };
    }
    // The middle of the clip's frame: media timestamps rounded to a coarse time base can start
    // a frame a little late, and the middle still falls inside it.
    const zelmediatypes::TickTime decodeTime =
        job.frameStart + zelmediatypes::TickTime(job.clip.frameRate.TicksPerFrame() / 2);
    return decoder->DecodeFrame(decodeTime, job.size, keyframeSink,
                                [this, &job] { return queue_.IsCancelled(job.requestID); });
}

void FrameRenderer::Deliver(ML::RequestID requestID, VF::VideoFrameRef frame, bool isFinal) {
    try {
        queue_.DeliverUnlessCancelled(requestID, [&] {
            KSL::StationUtils::PostMessageToUIThread(
                ML::kStation_RenderFrameCompletion,
                std::make_shared<ML::RenderFrameCompletionMessage>(requestID, std::move(frame),
                                                                   isFinal),
                false);
        });
    } catch (const std::exception&) {
        // No UI thread to post to (the application is gone): nobody is left to tell.
    }
}

} // namespace platform::media
