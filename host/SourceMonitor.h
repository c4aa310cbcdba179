#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Listener.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QTimer>
#include <QWidget>

#include <vector>

class QLabel;
class QSlider;

namespace host {

class MonitorPicture;

// A small source monitor: the frame of the selected (or opened) master clip at
// its playhead, from the media layer, with the caption of the clip's shown
// caption stream at that time drawn over it. It follows the selection and
// opening messages of the project panel, the clip's and the stream's own
// messages, and the source time display for its timecode.
class SourceMonitor : public QWidget, private KSL::Listener {
public:
    explicit SourceMonitor(QWidget* parent = nullptr);
    ~SourceMonitor() override;

    const KSL::InterfaceRef<BE::IMasterClip>& GetClip() const { return clip_; }
    // The stream whose captions are drawn: the one opened last for this clip,
    // else the clip's first stream.
    const KSL::InterfaceRef<BE::ICaptioningStream>& GetStream() const { return stream_; }
    zelmediatypes::TickTime GetPlayhead() const { return playhead_; }
    void SetPlayhead(zelmediatypes::TickTime time);

    // Whether a frame was asked for and has not arrived (a screenshot waits for it).
    bool HasPendingFrame() const { return pendingRequest_ != 0 || refreshTimer_.isActive(); }

    MonitorPicture& GetPicture() const { return *picture_; }
    QLabel& GetTimecodeLabel() const { return *timecode_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    bool HandleMessage(const KSL::Message& message) override;
    void ShowClip(KSL::InterfaceRef<BE::IMasterClip> clip,
                  KSL::InterfaceRef<BE::ICaptioningStream> stream);
    void SubscribeTo(const KSL::StationID& station);
    void UnsubscribeFromClip();
    void RequestFrame();
    void Compose();
    void UpdateControls();

    MonitorPicture* picture_;
    QSlider* slider_;
    QLabel* timecode_;
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    std::vector<KSL::StationID> clipStations_;
    zelmediatypes::TickTime playhead_;
    zelmediatypes::TimeDisplay timeDisplay_ = zelmediatypes::kTimeDisplay_2997DropTimecode;
    ML::RequestID pendingRequest_ = 0;
    VF::VideoFrameRef frame_;
    // Collects resizes and playhead moves into one frame request.
    QTimer refreshTimer_;
};

} // namespace host
