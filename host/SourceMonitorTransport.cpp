// The source monitor's transport: playback, shuttle speeds, frame steps and the keys for them.
#include "ML/FrameService.h"
#include "MonitorPicture.h"
#include "SourceMonitor.h"

#include <QKeyEvent>

#include <algorithm>
#include <cmath>

namespace host {
namespace {

using zelmediatypes::TickTime;

// Repeated J or L doubles the speed up to this many times normal.
constexpr double kFastestShuttle = 8;

// The next shuttle speed in `direction` (1 or -1): normal speed, or double the speed already
// going that way.
double ShuttleSpeed(double current, int direction) {
    if (current * direction > 0) {
        return direction * std::min(std::abs(current) * 2, kFastestShuttle);
    }
    return direction;
}

} // namespace

void SourceMonitor::Play(double speed) {
    if (!clip_ || speed == 0) {
        return;
    }
    StartPlayback(speed);
}

void SourceMonitor::StartPlayback(double speed, std::optional<TickTime> stopAt) {
    const BE::MasterClipSettings settings = clip_->GetSettings();
    const QSize size =
        picture_->FittedSize(settings.frameRect.Width(), settings.frameRect.Height());
    refreshTimer_.stop();
    if (pendingRequest_ != 0 && ML::FrameService::IsRunning()) {
        ML::FrameService::CancelRequest(pendingRequest_);
    }
    pendingRequest_ = 0;
    playback_.Play(settings, playhead_, speed,
                   size.isEmpty() ? ML::FrameSize{} : ML::FrameSize{size.width(), size.height()},
                   stopAt);
}

void SourceMonitor::Pause() {
    if (!IsPlaying()) {
        return;
    }
    playback_.Stop();
    // The frame shown stays; the playhead is its time.
    AnnouncePlayhead();
}

void SourceMonitor::StepFrames(int frames) {
    Pause();
    if (clip_) {
        SetPlayhead(playhead_ + clip_->GetSettings().frameRate.FrameDuration() * frames);
    }
}

void SourceMonitor::StepSeconds(int seconds) {
    Pause();
    if (!clip_) {
        return;
    }
    // To the start of the frame shown a whole number of seconds away.
    const std::int64_t frameTicks = clip_->GetSettings().frameRate.FrameDuration().GetTicks();
    const std::int64_t target = playhead_.GetTicks() + seconds * zelmediatypes::kTicksPerSecond;
    const std::int64_t frame = target >= 0 ? target / frameTicks : -1;
    SetPlayhead(TickTime(frame * frameTicks));
}

bool SourceMonitor::CanPlaySelectedCaption() const {
    return selectedCaption_ && selectedCaptionClip_ &&
           selectedCaption_->GetEndTime() > selectedCaption_->GetBeginTime();
}

void SourceMonitor::PlaySelectedCaption() {
    if (!CanPlaySelectedCaption()) {
        return;
    }
    const zelcaptioning::CaptionPtr caption = selectedCaption_;
    if (selectedCaptionClip_ != clip_) {
        ShowClip(selectedCaptionClip_, {});
    }
    playback_.Stop();
    playhead_ = ClampIntoClip(caption->GetBeginTime());
    StartPlayback(1, caption->GetEndTime());
}

bool SourceMonitor::HandleTransportKey(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const bool shift = modifiers == Qt::ShiftModifier;
    if (modifiers != Qt::NoModifier && !shift) {
        return false;
    }
    const int key = event.key();
    const bool shuttleKey =
        key == Qt::Key_Space || key == Qt::Key_J || key == Qt::Key_K || key == Qt::Key_L;
    if (shift && shuttleKey) {
        return false;
    }
    switch (key) {
    case Qt::Key_Space:
        IsPlaying() ? Pause() : Play(1);
        return true;
    case Qt::Key_L:
        Play(ShuttleSpeed(GetPlaybackSpeed(), 1));
        return true;
    case Qt::Key_J:
        Play(ShuttleSpeed(GetPlaybackSpeed(), -1));
        return true;
    case Qt::Key_K:
        Pause();
        return true;
    case Qt::Key_Left:
        shift ? StepSeconds(-1) : StepFrames(-1);
        return true;
    case Qt::Key_Right:
        shift ? StepSeconds(1) : StepFrames(1);
        return true;
    case Qt::Key_Home:
        Pause();
        SetPlayhead(TickTime());
        return true;
    case Qt::Key_End:
        Pause();
        SetPlayhead(clip_ ? clip_->GetSettings().duration : TickTime());
        return true;
    default:
        return false;
    }
}

void SourceMonitor::keyPressEvent(QKeyEvent* event) {
    if (!HandleTransportKey(*event)) {
        QWidget::keyPressEvent(event);
    }
}

TickTime SourceMonitor::ClampIntoClip(TickTime time) const {
    if (!clip_) {
        return std::max(time, TickTime());
    }
    const BE::MasterClipSettings settings = clip_->GetSettings();
    const TickTime lastFrame = settings.duration - settings.frameRate.FrameDuration();
    if (settings.duration > TickTime() && time > lastFrame) {
        time = lastFrame;
    }
    return std::max(time, TickTime());
}

void SourceMonitor::ShowPlaybackFrame(VF::VideoFrameRef frame) {
    frame_ = std::move(frame);
    if (frame_->IsError()) {
        playback_.Stop();
    } else {
        playhead_ = ClampIntoClip(frame_->GetTime());
    }
    UpdateControls();
    Compose();
    AnnouncePlayhead();
}

void SourceMonitor::OnPlaybackEnded(TickTime lastFrameTime) {
    playhead_ = ClampIntoClip(lastFrameTime);
    UpdateControls();
    Compose();
    AnnouncePlayhead();
}

} // namespace host
