#include "ML/MediaPlayer.h"

#include "KSL/Exception.h"
#include "MediaDecoder.h"
#include "PlaybackRun.h"

#include <algorithm>

namespace ML {

MediaPlayer::MediaPlayer(std::unique_ptr<AudioOutput> output)
    : output_(std::move(output)) {}

MediaPlayer::~MediaPlayer() {
    Stop();
}

void MediaPlayer::Play(const BE::MasterClipSettings& clip, zelmediatypes::TickTime from,
                       double speed, FrameSize size) {
    if (speed == 0) {
        throw KSL::Exception("playback needs a speed other than 0");
    }
    if (size.widthPx < 0 || size.heightPx < 0 || (size.widthPx == 0) != (size.heightPx == 0)) {
        throw KSL::Exception("playback needs a frame size of at least 1 x 1, or 0 x 0 for the "
                             "media's own size");
    }
    Stop();
    if (size.IsMediaSize() && clip.media.kind == BE::MediaSource::Kind::kGeneratedTestSource) {
        size = {std::max(clip.frameRect.Width(), 1), std::max(clip.frameRect.Height(), 1)};
    }
    const zelmediatypes::TickTime lastFrame = clip.duration - clip.frameRate.FrameDuration();
    if (clip.duration > zelmediatypes::kTime_Zero && from > lastFrame) {
        from = std::max(lastFrame, zelmediatypes::kTime_Zero);
    }
    from = std::max(from, zelmediatypes::kTime_Zero);
    AudioOutput* output = nullptr;
    if (speed == 1 && output_ && output_->Open(AudioFormat())) {
        output = output_.get();
    }
    lastStatistics_ = {};
    run_ = std::make_unique<platform::media::PlaybackRun>(clip, from, speed, size, output,
                                                          videoDecoder_);
}

void MediaPlayer::Stop() {
    if (!run_) {
        return;
    }
    lastStatistics_ = run_->GetStatistics();
    run_.reset();
    if (output_) {
        output_->Close();
    }
}

bool MediaPlayer::IsPlaying() const {
    return run_ != nullptr;
}

double MediaPlayer::GetSpeed() const {
    return run_ ? run_->GetSpeed() : 0;
}

zelmediatypes::TickTime MediaPlayer::GetClockTime() const {
    return run_ ? run_->GetClockTime() : zelmediatypes::TickTime();
}

VF::VideoFrameRef MediaPlayer::TakeDueFrame() {
    return run_ ? run_->TakeDueFrame() : nullptr;
}

bool MediaPlayer::HasReachedEnd() const {
    return run_ && run_->HasReachedEnd();
}

PlaybackStatistics MediaPlayer::GetStatistics() const {
    return run_ ? run_->GetStatistics() : lastStatistics_;
}

} // namespace ML
