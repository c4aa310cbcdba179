#pragma once

#include "KSL/Listener.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QMenu>

#include <memory>

class QActionGroup;

namespace host {

// The View menu's time display choice, for the source (clips) and for the
// sequence. Choosing a display announces it as the timecode controls do:
// UIF::HotTimecodeVideoTimeDisplayChangedMessage (or the audio message for an
// audio display) on "timecodeControl.timedisplay.changed.station.source" or
// ".sequence". The checks follow every announcement on those stations, so that
// a display chosen elsewhere (a clip's own rate, the sequence settings) shows
// here too.
class TimeDisplayMenu : public QMenu {
public:
    enum class Target { kSource, kSequence };

    explicit TimeDisplayMenu(QWidget* parent = nullptr);
    ~TimeDisplayMenu() override;

    zelmediatypes::TimeDisplay GetVideoTimeDisplay(Target target) const;
    zelmediatypes::TimeDisplay GetAudioTimeDisplay(Target target) const;

private:
    class StationFollower;

    QMenu* AddTargetMenu(Target target, const QString& title);
    void Choose(Target target, zelmediatypes::TimeDisplay display);
    // Records an announced display and checks its item.
    void Follow(Target target, zelmediatypes::TimeDisplay display);

    struct Choice {
        zelmediatypes::TimeDisplay video = zelmediatypes::kTimeDisplay_2997DropTimecode;
        zelmediatypes::TimeDisplay audio = zelmediatypes::kTimeDisplay_AudioSamples48kHz;
    };
    Choice source_;
    Choice sequence_;
    QMenu* sourceMenu_ = nullptr;
    QMenu* sequenceMenu_ = nullptr;
    std::unique_ptr<StationFollower> sourceFollower_;
    std::unique_ptr<StationFollower> sequenceFollower_;
};

} // namespace host
