#pragma once

#include "BE/MasterClipSettings.h"
#include "ML/AudioOutput.h"
#include "ML/FrameRequest.h"
#include "ML/MediaPlayer.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace platform::media {

class MediaDecoder;

// One playback from a start time at one speed: the video thread that fills a short queue of
// frames ahead of the clock, the audio thread that feeds the output at normal speed, and the
// clock the two share. Made and destroyed on the UI thread; the destructor stops and joins
// the threads.
class PlaybackRun {
public:
    // output is null when the clock is the system clock; otherwise it is open. The decoder
    // slot holds the video decoder of an earlier run, used again when it decodes the clip's
    // file, and receives the one this run opens; nothing else touches it while the run lives.
    PlaybackRun(const BE::MasterClipSettings& clip, zelmediatypes::TickTime from, double speed,
                ML::FrameSize size, ML::AudioOutput* output,
                std::shared_ptr<MediaDecoder>& decoderSlot);
    PlaybackRun(const PlaybackRun&) = delete;
    PlaybackRun& operator=(const PlaybackRun&) = delete;
    ~PlaybackRun();

    double GetSpeed() const { return speed_; }
    zelmediatypes::TickTime GetClockTime() const;
    VF::VideoFrameRef TakeDueFrame();
    bool HasReachedEnd() const;
    ML::PlaybackStatistics GetStatistics() const;

private:
    struct QueuedFrame {
        std::int64_t distanceTicks; // from `from` along the direction of play
        VF::VideoFrameRef frame;
    };

    // How far the clock has run from `from`, in media ticks; 0 until the first frame is ready.
    std::int64_t ClockDistanceTicks() const;
    void RunVideo();
    // Draws or decodes each frame on its own: forward, and the generated source both ways.
    void MakeFramesOneByOne();
    // A file backwards: each group of pictures decoded forward once, its frames queued newest
    // first, the next group decoded while the queued one is shown.
    void DecodeBackwardByGroups();
    void RunAudio();
    MediaDecoder& OpenDecoder();
    zelmediatypes::TickTime NextFrameTime() const;
    bool IsPastClip(zelmediatypes::TickTime time) const;
    // Queues the frame of the next index, waiting for room. False when the run is stopping.
    bool Push(VF::VideoFrame frame);

    const BE::MasterClipSettings clip_;
    const zelmediatypes::TickTime from_;
    const double speed_;
    const int direction_;
    const ML::FrameSize size_;
    ML::AudioOutput* const output_;
    const ML::AudioFormat format_;
    const std::int64_t stepTicks_; // between the media times of queued frames
    std::shared_ptr<MediaDecoder>& decoder_;
    // Only the video thread uses these two.
    std::int64_t nextIndex_ = 0; // of the next frame queued, counted along the direction of play
    std::size_t queueLimit_;

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<QueuedFrame> frames_;
    bool started_ = false;
    bool videoDone_ = false;
    std::chrono::steady_clock::time_point startedAt_;
    ML::PlaybackStatistics statistics_;
    std::atomic<bool> stopping_{false};
    std::thread video_;
    std::thread audio_;
};

} // namespace platform::media
