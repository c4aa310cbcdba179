#include "PlaybackController.h"

#include "QtAudioOutput.h"

namespace host {
namespace {

// The poll period: a small part of a frame, so a frame is shown within 4 ms of its time.
constexpr int kPollIntervalMs = 4;

} // namespace

PlaybackController::PlaybackController(FrameSink showFrame, EndSink ended)
    : showFrame_(std::move(showFrame))
    , ended_(std::move(ended))
    , player_(std::make_unique<ML::MediaPlayer>(MakeSystemAudioOutput())) {
    poll_.setTimerType(Qt::PreciseTimer);
    poll_.setInterval(kPollIntervalMs);
    QObject::connect(&poll_, &QTimer::timeout, [this] { Poll(); });
}

void PlaybackController::SetAudioOutput(std::unique_ptr<ML::AudioOutput> output) {
    Stop();
    player_ = std::make_unique<ML::MediaPlayer>(std::move(output));
}

void PlaybackController::Play(const BE::MasterClipSettings& clip, zelmediatypes::TickTime from,
                              double speed, ML::FrameSize size,
                              std::optional<zelmediatypes::TickTime> stopAt) {
    stopAt_ = stopAt;
    lastFrameTime_ = from;
    player_->Play(clip, from, speed, size);
    poll_.start();
}

void PlaybackController::Stop() {
    poll_.stop();
    player_->Stop();
}

void PlaybackController::Poll() {
    if (VF::VideoFrameRef frame = player_->TakeDueFrame()) {
        const bool pastStop = stopAt_ && !frame->IsError() && frame->GetTime() >= *stopAt_;
        if (!pastStop) {
            lastFrameTime_ = frame->GetTime();
            showFrame_(std::move(frame));
        }
    }
    const bool reachedStop = stopAt_ && player_->GetClockTime() >= *stopAt_;
    if (player_->IsPlaying() && (reachedStop || player_->HasReachedEnd())) {
        Stop();
        ended_(lastFrameTime_);
    }
}

} // namespace host
