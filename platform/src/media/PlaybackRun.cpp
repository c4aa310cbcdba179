#include "PlaybackRun.h"

#include "AudioDecoder.h"
#include "MediaDecoder.h"
#include "MediaError.h"
#include "TestSourceRenderer.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

namespace platform::media {
namespace {

using zelmediatypes::TickTime;

// Frames decoded ahead of the clock: enough to ride out a slow group of pictures.
constexpr std::size_t kQueuedFrameLimit = 6;
// Playing a file backwards, the frames of a group of pictures are decoded forward and held to be
// shown in reverse: this many bytes at most for the group being decoded and the queued one.
constexpr std::size_t kBackwardBudgetBytes = std::size_t{256} << 20;
// Silence is written in pieces of this many sample frames.
constexpr std::size_t kSilenceFrames = 1024;
// The audio thread's pause when the output's buffer is full.
constexpr auto kOutputFullPause = std::chrono::milliseconds(4);

std::int64_t StepTicks(const BE::MasterClipSettings& clip, double speed) {
    const auto stride = std::max<std::int64_t>(1, static_cast<std::int64_t>(std::abs(speed)));
    return clip.frameRate.FrameDuration().GetTicks() * stride;
}

// Sample frames as media ticks, without the overflow of frames * ticks per second.
std::int64_t FramesToTicks(std::int64_t frames, int rateHz) {
    return frames / rateHz * zelmediatypes::kTicksPerSecond +
           frames % rateHz * zelmediatypes::kTicksPerSecond / rateHz;
}

} // namespace

PlaybackRun::PlaybackRun(const BE::MasterClipSettings& clip, TickTime from, double speed,
                         ML::FrameSize size, ML::AudioOutput* output,
                         std::shared_ptr<MediaDecoder>& decoderSlot)
    : clip_(clip)
    , from_(from)
    , speed_(speed)
    , direction_(speed < 0 ? -1 : 1)
    , size_(size)
    , output_(output)
    , stepTicks_(StepTicks(clip, speed))
    , decoder_(decoderSlot)
    , queueLimit_(kQueuedFrameLimit) {
    video_ = std::thread([this] { RunVideo(); });
    if (output_) {
        audio_ = std::thread([this] { RunAudio(); });
    }
}

PlaybackRun::~PlaybackRun() {
    {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    changed_.notify_all();
    video_.join();
    if (audio_.joinable()) {
        audio_.join();
    }
}

std::int64_t PlaybackRun::ClockDistanceTicks() const {
    if (output_) {
        return FramesToTicks(output_->GetPlayedFrameCount(), format_.sampleRateHz);
    }
    std::lock_guard lock(mutex_);
    if (!started_) {
        return 0;
    }
    const auto elapsed = std::chrono::steady_clock::now() - startedAt_;
    const double seconds = std::chrono::duration<double>(elapsed).count();
    return static_cast<std::int64_t>(seconds * std::abs(speed_) *
                                     static_cast<double>(zelmediatypes::kTicksPerSecond));
}

TickTime PlaybackRun::GetClockTime() const {
    return from_ + TickTime(direction_ * ClockDistanceTicks());
}

VF::VideoFrameRef PlaybackRun::TakeDueFrame() {
    const std::int64_t distance = ClockDistanceTicks();
    VF::VideoFrameRef due;
    {
        std::lock_guard lock(mutex_);
        while (!frames_.empty() && frames_.front().distanceTicks <= distance) {
            if (due) {
                ++statistics_.framesDropped;
            }
            due = std::move(frames_.front().frame);
            frames_.pop_front();
        }
        if (due) {
            ++statistics_.framesShown;
        }
    }
    changed_.notify_all();
    return due;
}

bool PlaybackRun::HasReachedEnd() const {
    const TickTime clock = GetClockTime();
    if (direction_ < 0) {
        return clock < zelmediatypes::kTime_Zero;
    }
    if (clip_.duration > zelmediatypes::kTime_Zero) {
        return clock >= clip_.duration;
    }
    std::lock_guard lock(mutex_);
    return videoDone_ && frames_.empty();
}

ML::PlaybackStatistics PlaybackRun::GetStatistics() const {
    std::lock_guard lock(mutex_);
    return statistics_;
}

bool PlaybackRun::Push(VF::VideoFrame frame) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return stopping_ || frames_.size() < queueLimit_; });
    if (stopping_) {
        return false;
    }
    frames_.push_back(
        {nextIndex_ * stepTicks_, std::make_shared<const VF::VideoFrame>(std::move(frame))});
    ++nextIndex_;
    if (!started_) {
        started_ = true;
        startedAt_ = std::chrono::steady_clock::now();
    }
    lock.unlock();
    changed_.notify_all();
    return true;
}

TickTime PlaybackRun::NextFrameTime() const {
    return from_ + TickTime(direction_ * nextIndex_ * stepTicks_);
}

bool PlaybackRun::IsPastClip(TickTime time) const {
    return time < zelmediatypes::kTime_Zero ||
           (clip_.duration > zelmediatypes::kTime_Zero && time >= clip_.duration);
}

MediaDecoder& PlaybackRun::OpenDecoder() {
    if (!decoder_ || decoder_->GetPath() != clip_.media.filePathUtf8) {
        decoder_.reset();
        // Two decoder threads: playback is the one job of this thread.
        decoder_ = std::make_shared<MediaDecoder>(clip_.media.filePathUtf8, 2);
    }
    return *decoder_;
}

void PlaybackRun::RunVideo() {
    try {
        if (direction_ < 0 && clip_.media.kind == BE::MediaSource::Kind::kFile) {
            DecodeBackwardByGroups();
        } else {
            MakeFramesOneByOne();
        }
    } catch (const DecodeCancelled&) {
    } catch (const std::exception& error) {
        // MediaError, or a size the test source refuses: shown as an error frame. The decoder
        // is not kept: the file may be mended before the next run.
        decoder_.reset();
        Push(VF::VideoFrame::MakeError(error.what()));
    }
    {
        std::lock_guard lock(mutex_);
        videoDone_ = true;
        if (!started_) {
            started_ = true;
            startedAt_ = std::chrono::steady_clock::now();
        }
    }
    changed_.notify_all();
}

void PlaybackRun::MakeFramesOneByOne() {
    const TickTime frameDuration = clip_.frameRate.FrameDuration();
    while (!stopping_) {
        const TickTime time = NextFrameTime();
        if (IsPastClip(time) && nextIndex_ > 0) {
            return;
        }
        VF::VideoFrame frame(0, 0);
        if (clip_.media.kind == BE::MediaSource::Kind::kGeneratedTestSource) {
            frame =
                TestSourceRenderer::Render(time, clip_.frameRate, size_.widthPx, size_.heightPx);
        } else {
            // The middle of the frame: coarse media timestamps can start a frame late.
            frame = OpenDecoder().DecodeFrame(time + TickTime(frameDuration.GetTicks() / 2), size_,
                                              {}, [this] { return stopping_.load(); });
        }
        if (!Push(std::move(frame))) {
            return;
        }
    }
}

void PlaybackRun::DecodeBackwardByGroups() {
    MediaDecoder& decoder = OpenDecoder();
    const ML::FrameSize size = size_.IsMediaSize() ? decoder.GetPictureSize() : size_;
    const std::size_t frameBytes =
        static_cast<std::size_t>(std::max(size.widthPx, 1)) * std::max(size.heightPx, 1) * 4;
    // The queue holds one group while the next is decoded: each gets half of the budget.
    const std::size_t groupLimit = std::max<std::size_t>(1, kBackwardBudgetBytes / 2 / frameBytes);
    queueLimit_ = groupLimit;
    const TickTime halfFrame(clip_.frameRate.FrameDuration().GetTicks() / 2);
    while (!stopping_) {
        const TickTime last = NextFrameTime();
        if (IsPastClip(last) && nextIndex_ > 0) {
            return;
        }
        const auto framesToStart = static_cast<std::size_t>(last.GetTicks() / stepTicks_ + 1);
        std::vector<VF::VideoFrame> group = decoder.DecodeGroupBackward(
            last + halfFrame, TickTime(stepTicks_), std::min(groupLimit, framesToStart), size_,
            [this] { return stopping_.load(); });
        for (VF::VideoFrame& frame : group) {
            if (!Push(std::move(frame))) {
                return;
            }
        }
    }
}

void PlaybackRun::RunAudio() {
    const auto channels = static_cast<std::size_t>(format_.channelCount);
    std::unique_ptr<AudioDecoder> decoder;
    if (clip_.media.kind == BE::MediaSource::Kind::kFile) {
        try {
            decoder = std::make_unique<AudioDecoder>(clip_.media.filePathUtf8, from_, format_);
        } catch (const std::exception&) {
            // The video thread reports an unreadable file; the sound stays silent.
        }
    }
    {
        // The clock starts with the first frame shown.
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return stopping_ || started_; });
    }
    std::vector<float> samples;
    std::size_t position = 0;
    bool soundEnded = !decoder;
    while (!stopping_) {
        if (position == samples.size()) {
            position = 0;
            if (soundEnded || !decoder->Read(samples)) {
                soundEnded = true;
                samples.assign(kSilenceFrames * channels, 0.F);
            }
        }
        const std::size_t written =
            output_->Write(samples.data() + position, (samples.size() - position) / channels);
        position += written * channels;
        if (written == 0) {
            std::unique_lock lock(mutex_);
            changed_.wait_for(lock, kOutputFullPause, [this] { return stopping_.load(); });
        }
    }
}

} // namespace platform::media
