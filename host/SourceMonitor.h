#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/IProject.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Listener.h"
#include "ML/FrameRequest.h"
#include "PlaybackController.h"
#include "VF/VideoFrame.h"
#include "zelcaptioning/Caption.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>
#include <vector>

class QKeyEvent;
class QLabel;
class QSlider;

namespace host {

class MonitorPicture;
class TimecodeEntry;

// A small source monitor: the frame of the selected (or opened) master clip at
// its playhead, from the media layer, with the caption of the clip's shown
// caption stream at that time drawn over it. It follows the selection and
// opening messages of the project panel, the clip's and the stream's own
// messages, and the source time display for its timecode; a display chosen while
// a clip is shown is kept in the clip's settings (a change without an undo step,
// saved with the project) and comes back with the clip. It plays the clip
// with its sound (PlaybackController), answers the transport keys, and
// announces its playhead on MZ::kStation_SourcePlayhead.
class SourceMonitor : public QWidget, private KSL::Listener {
public:
    using ProjectGetter = std::function<KSL::InterfaceRef<BE::IProject>()>;

    explicit SourceMonitor(ProjectGetter project, QWidget* parent = nullptr);
    ~SourceMonitor() override;

    const KSL::InterfaceRef<BE::IMasterClip>& GetClip() const { return clip_; }
    // The stream whose captions are drawn: the one opened last for this clip,
    // else the clip's first stream.
    const KSL::InterfaceRef<BE::ICaptioningStream>& GetStream() const { return stream_; }
    zelmediatypes::TickTime GetPlayhead() const { return playhead_; }
    // Moves the playhead (clamped into the clip); playback goes on from there.
    void SetPlayhead(zelmediatypes::TickTime time);

    // Plays from the playhead at `speed` times normal speed, backwards when negative.
    void Play(double speed);
    void Pause();
    bool IsPlaying() const { return playback_.IsPlaying(); }
    // 0 when paused.
    double GetPlaybackSpeed() const { return playback_.GetSpeed(); }
    // Pauses and moves the playhead by whole frames, or by seconds (to a frame's start).
    void StepFrames(int frames);
    void StepSeconds(int seconds);
    // The last caption a panel selected (MZ::CaptionSelectedMessage), played from its begin
    // to its end on its clip.
    bool CanPlaySelectedCaption() const;
    void PlaySelectedCaption();
    // Space, J/K/L, Left/Right (Shift: a second), Home/End; false for any other key.
    bool HandleTransportKey(const QKeyEvent& event);
    PlaybackController& GetPlayback() { return playback_; }

    // Whether a frame was asked for and has not arrived (a screenshot waits for it).
    bool HasPendingFrame() const { return pendingRequest_ != 0 || refreshTimer_.isActive(); }

    MonitorPicture& GetPicture() const { return *picture_; }
    QLabel& GetTimecodeLabel() const { return *timecode_; }
    TimecodeEntry& GetTimecodeEntry() const { return *timecodeEntry_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool HandleMessage(const KSL::Message& message) override;
    void ShowClip(KSL::InterfaceRef<BE::IMasterClip> clip,
                  KSL::InterfaceRef<BE::ICaptioningStream> stream);
    void SubscribeTo(const KSL::StationID& station);
    void UnsubscribeFromClip();
    // Announces the source time display the shown clip starts in.
    void AnnounceClipTimeDisplay();
    // Keeps a display chosen while the clip is shown in the clip's settings.
    void KeepClipTimeDisplay();
    void RequestFrame();
    void Compose();
    void UpdateControls();
    zelcaptioning::CaptionPtr CaptionAtPlayhead() const;
    void AnnouncePlayhead();
    zelmediatypes::TickTime ClampIntoClip(zelmediatypes::TickTime time) const;
    void ShowPlaybackFrame(VF::VideoFrameRef frame);
    void OnPlaybackEnded(zelmediatypes::TickTime lastFrameTime);
    void StartPlayback(double speed, std::optional<zelmediatypes::TickTime> stopAt = {});

    ProjectGetter project_;
    MonitorPicture* picture_;
    QSlider* slider_;
    QLabel* timecode_;
    TimecodeEntry* timecodeEntry_;
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    std::vector<KSL::StationID> clipStations_;
    zelmediatypes::TickTime playhead_;
    zelmediatypes::TimeDisplay timeDisplay_ = zelmediatypes::kTimeDisplay_2997DropTimecode;
    ML::RequestID pendingRequest_ = 0;
    VF::VideoFrameRef frame_;
    // Collects resizes and playhead moves into one frame request.
    QTimer refreshTimer_;
    KSL::InterfaceRef<BE::IMasterClip> selectedCaptionClip_;
    zelcaptioning::CaptionPtr selectedCaption_;
    PlaybackController playback_;
};

} // namespace host
