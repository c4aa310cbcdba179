#include "SourceMonitor.h"

#include "BE/CaptionMessages.h"
#include "BE/ProjectMessages.h"
#include "BE/StreamMessages.h"
#include "HSL/Messages.h"
#include "KSL/Exception.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/MasterClipActions.h"
#include "MZ/PlayheadMessages.h"
#include "MZ/Stations.h"
#include "MonitorPicture.h"
#include "QtText.h"
#include "TimecodeEntry.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/TimeDisplayChoice.h"
#include "zelmediatypes/TimeLabel.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

#include <algorithm>
#include <stdexcept>

namespace host {
namespace {

constexpr const char* kSharedStations[] = {
    MZ::kStation_MasterClipActivation, MZ::kStation_ClosedCaptionsActivation,
    ML::kStation_RenderFrameCompletion, UIF::kStation_SourceTimeDisplayChanged,
    MZ::kStation_CaptionSelection};

// Frames of a clip at its rate; at least one, so a clip without a duration shows its first.
int FrameCount(const BE::MasterClipSettings& settings) {
    const std::int64_t frames =
        settings.duration.GetTicks() / settings.frameRate.FrameDuration().GetTicks();
    return static_cast<int>(std::clamp<std::int64_t>(frames, 1, 1 << 30));
}

} // namespace

SourceMonitor::SourceMonitor(ProjectGetter project, QWidget* parent)
    : QWidget(parent)
    , project_(std::move(project))
    , picture_(new MonitorPicture(this))
    , slider_(new QSlider(Qt::Horizontal, this))
    , timecode_(new QLabel(this))
    , timecodeEntry_(new TimecodeEntry([this](zelmediatypes::TickTime time) {
        SetPlayhead(time);
        setFocus(Qt::OtherFocusReason); // the transport keys work again at once
    }))
    , playback_([this](VF::VideoFrameRef frame) { ShowPlaybackFrame(std::move(frame)); },
                [this](zelmediatypes::TickTime last) { OnPlaybackEnded(last); }) {
    setObjectName(QStringLiteral("sourceMonitor"));
    const QString monitorName = Localized(
        "$$$/Corvala/Host/Monitor/Name=Source monitor: Space plays, J/K/L shuttle, arrows step");
    setAccessibleName(monitorName);
    setToolTip(monitorName);
    setFocusPolicy(Qt::StrongFocus);
    // A click on the picture gives the monitor the focus, and with it the transport keys.
    picture_->setFocusPolicy(Qt::ClickFocus);
    picture_->setFocusProxy(this);
    slider_->setObjectName(QStringLiteral("monitorPlayhead"));
    slider_->setAccessibleName(Localized("$$$/Corvala/Host/Monitor/Playhead=Playhead"));
    timecode_->setObjectName(QStringLiteral("monitorTimecode"));
    timecode_->setMinimumWidth(200);
    auto* controls = new QHBoxLayout;
    controls->addWidget(slider_, 1);
    controls->addWidget(timecode_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(picture_, 1);
    layout->addLayout(controls);
    layout->addWidget(timecodeEntry_);

    refreshTimer_.setSingleShot(true);
    refreshTimer_.setInterval(30);
    connect(&refreshTimer_, &QTimer::timeout, this, [this] { RequestFrame(); });
    connect(slider_, &QSlider::valueChanged, this, [this](int frame) {
        if (clip_) {
            SetPlayhead(clip_->GetSettings().frameRate.FrameDuration() * frame);
        }
    });
    for (const char* station : kSharedStations) {
        KSL::StationUtils::AddListener(station, this);
    }
    ShowClip({}, {});
}

SourceMonitor::~SourceMonitor() {
    playback_.Stop();
    if (pendingRequest_ != 0 && ML::FrameService::IsRunning()) {
        ML::FrameService::CancelRequest(pendingRequest_);
    }
}

void SourceMonitor::SetPlayhead(zelmediatypes::TickTime time) {
    time = ClampIntoClip(time);
    if (IsPlaying()) {
        playhead_ = time;
        StartPlayback(GetPlaybackSpeed());
        return;
    }
    if (time == playhead_) {
        return;
    }
    playhead_ = time;
    UpdateControls();
    Compose();
    AnnouncePlayhead();
    refreshTimer_.start();
}

void SourceMonitor::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    if (clip_) {
        refreshTimer_.start();
    }
}

bool SourceMonitor::HandleMessage(const KSL::Message& message) {
    if (const auto* done = message.As<ML::RenderFrameCompletionMessage>()) {
        if (done->GetRequestID() != pendingRequest_ || pendingRequest_ == 0) {
            return false; // another view's request
        }
        frame_ = done->GetFrame();
        if (done->IsFinal()) {
            pendingRequest_ = 0;
        }
        Compose();
    } else if (const auto* caption = message.As<MZ::CaptionSelectedMessage>()) {
        selectedCaptionClip_ = caption->GetMasterClip();
        selectedCaption_ = caption->GetCaption();
        return false; // others may follow the selection too
    } else if (const auto* selected = message.As<MZ::MasterClipSelectedMessage>()) {
        ShowClip(selected->GetMasterClip(), {});
    } else if (const auto* source = message.As<HSL::SourceClipSelectedMessage>()) {
        ShowClip(source->GetClip(), {});
    } else if (const auto* closed = message.As<MZ::MasterClipClosedMessage>()) {
        if (closed->GetMasterClip() == clip_) {
            ShowClip({}, {});
        }
    } else if (const auto* opened = message.As<MZ::ClosedCaptionsOpenedMessage>()) {
        ShowClip(opened->GetMasterClip(), opened->GetStream());
    } else if (const auto* item = message.As<MZ::CaptioningTrackItemOpenedMessage>()) {
        ShowClip(item->GetTrackItem().masterClip, item->GetTrackItem().stream);
    } else if (const auto* display = message.As<UIF::HotTimecodeVideoTimeDisplayChangedMessage>()) {
        timeDisplay_ = display->GetTimeDisplay();
        KeepClipTimeDisplay();
        UpdateControls();
    } else if (message.As<BE::MasterClipClipChangedMessage>()) {
        AnnounceClipTimeDisplay(); // the clip's rate or chosen display may have changed
        UpdateControls();
        refreshTimer_.start();
    } else if (message.As<BE::CaptioningStreamChangedMessage>()) {
        // The shown stream may have gone or changed its format: choose again.
        const bool streamGone = stream_ && !stream_->GetMasterClip();
        ShowClip(clip_, streamGone ? KSL::InterfaceRef<BE::ICaptioningStream>() : stream_);
    } else if (message.As<BE::CaptionsChangedMessage>() || message.As<BE::CaptionsMovedMessage>()) {
        Compose();
    } else {
        return false;
    }
    return true;
}

void SourceMonitor::ShowClip(KSL::InterfaceRef<BE::IMasterClip> clip,
                             KSL::InterfaceRef<BE::ICaptioningStream> stream) {
    if (clip != clip_) {
        playback_.Stop();
        if (pendingRequest_ != 0 && ML::FrameService::IsRunning()) {
            ML::FrameService::CancelRequest(pendingRequest_);
        }
        pendingRequest_ = 0;
        frame_.reset();
        clip_ = std::move(clip);
        playhead_ = zelmediatypes::TickTime();
        AnnounceClipTimeDisplay();
    } else if (!stream) {
        stream = stream_;
    }
    if (!stream && clip_ && clip_->GetCaptioningStreamCount() > 0) {
        stream = clip_->GetCaptioningStream(0);
    }
    stream_ = std::move(stream);
    UnsubscribeFromClip();
    if (clip_) {
        SubscribeTo(KSL::StationOf(clip_));
    }
    if (stream_) {
        SubscribeTo(KSL::StationOf(stream_));
    }
    UpdateControls();
    Compose();
    if (clip_) {
        refreshTimer_.start();
    } else {
        refreshTimer_.stop();
    }
}

void SourceMonitor::AnnounceClipTimeDisplay() {
    const zelmediatypes::TimeDisplay display =
        MZ::MasterClipActions::GetVideoTimeDisplayFormat(clip_);
    if (display != zelmediatypes::kTimeDisplay_Unknown && display != timeDisplay_) {
        UIF::AnnounceTimeDisplayChoice(KSL::StationID(UIF::kStation_SourceTimeDisplayChanged),
                                       display);
    }
}

void SourceMonitor::KeepClipTimeDisplay() {
    // The display announced for the clip itself (when it was shown) is no choice to keep.
    const KSL::InterfaceRef<BE::IProject> project = project_();
    if (!clip_ || !project ||
        timeDisplay_ == MZ::MasterClipActions::GetVideoTimeDisplayFormat(clip_)) {
        return;
    }
    BE::MasterClipSettings settings = clip_->GetSettings();
    settings.videoTimeDisplay = timeDisplay_;
    try {
        project->SetMasterClipSettings(clip_, settings, BE::UndoMode::kWithoutUndoStep);
    } catch (const KSL::Exception&) {
        // The clip left the project (another one was opened): there is nothing to keep.
    }
}

void SourceMonitor::SubscribeTo(const KSL::StationID& station) {
    KSL::StationUtils::AddListener(station, this);
    clipStations_.push_back(station);
}

void SourceMonitor::UnsubscribeFromClip() {
    for (const KSL::StationID& station : clipStations_) {
        KSL::StationUtils::RemoveListener(station, this);
    }
    clipStations_.clear();
}

void SourceMonitor::RequestFrame() {
    // While playing, the player brings the frames.
    if (!clip_ || IsPlaying() || !ML::FrameService::IsRunning()) {
        return;
    }
    const BE::MasterClipSettings settings = clip_->GetSettings();
    const QSize size =
        picture_->FittedSize(settings.frameRect.Width(), settings.frameRect.Height());
    if (size.isEmpty()) {
        return;
    }
    if (pendingRequest_ != 0) {
        ML::FrameService::CancelRequest(pendingRequest_);
    }
    pendingRequest_ = ML::FrameService::RequestFrame(
        settings, playhead_, {size.width(), size.height()}, ML::Refinement::kKeyframeFirst);
}

void SourceMonitor::Compose() {
    if (!clip_) {
        picture_->ShowText(Localized("$$$/Corvala/Host/Monitor/NoClip=Select a master clip to "
                                     "see it here."));
        return;
    }
    const BE::MasterClipSettings settings = clip_->GetSettings();
    std::optional<CaptionGrid> closedGrid;
    if (stream_ && !zelcaptioning::IsOpenCaptions(stream_->GetStreamFormat())) {
        closedGrid = CaptionGrid{stream_->GetGridColumnCount(), stream_->GetGridRowCount()};
    }
    picture_->Show(frame_, CaptionAtPlayhead(), settings.frameRect.Width(),
                   settings.frameRect.Height(), closedGrid);
}

zelcaptioning::CaptionPtr SourceMonitor::CaptionAtPlayhead() const {
    if (stream_) {
        try {
            return MZ::Captioning(stream_).GetCaptionBlock(playhead_);
        } catch (const KSL::Exception&) {
            // The stream left the project; its captions are not drawn.
        }
    }
    return nullptr;
}

void SourceMonitor::AnnouncePlayhead() {
    if (clip_) {
        KSL::StationUtils::BroadcastMessage(
            MZ::kStation_SourcePlayhead,
            MZ::SourcePlayheadMovedMessage(clip_, stream_, playhead_, CaptionAtPlayhead(),
                                           IsPlaying()));
    }
}

void SourceMonitor::UpdateControls() {
    const QSignalBlocker blockSlider(slider_);
    slider_->setEnabled(static_cast<bool>(clip_));
    if (!clip_) {
        slider_->setRange(0, 0);
        timecode_->clear();
        timecodeEntry_->Clear();
        return;
    }
    const BE::MasterClipSettings settings = clip_->GetSettings();
    const zelmediatypes::TickTime frameDuration = settings.frameRate.FrameDuration();
    slider_->setRange(0, FrameCount(settings) - 1);
    slider_->setValue(static_cast<int>(playhead_.GetTicks() / frameDuration.GetTicks()));
    timecodeEntry_->ShowTime(playhead_, timeDisplay_, settings.frameRate);
    QString label = QStringLiteral("--");
    try {
        label = QString::fromStdString(
            zelmediatypes::FormatTimeLabel(playhead_, timeDisplay_, settings.frameRate));
    } catch (const std::invalid_argument&) {
        // A display not chosen yet, or one this build has no labels for.
    }
    timecode_->setText(QStringLiteral("%1  %2").arg(ToQString(settings.name), label));
}

} // namespace host
