#pragma once

#include "zelmediatypes/TimeDisplay.h"

#include <QMenu>

class QActionGroup;

namespace host {

// The View menu's time display choice, for the source (clips) and for the
// sequence, each with a video and an audio display under "Video" and "Audio". Choosing a display
// announces it as the timecode controls do: UIF::HotTimecodeVideoTimeDisplayChangedMessage (or the
// audio message for an audio display) on "timecodeControl.timedisplay.changed.station.source" or
// ".sequence".
class TimeDisplayMenu : public QMenu {
public:
    enum class Target { kSource, kSequence };

    explicit TimeDisplayMenu(QWidget* parent = nullptr);

    zelmediatypes::TimeDisplay GetVideoTimeDisplay(Target target) const;
    zelmediatypes::TimeDisplay GetAudioTimeDisplay(Target target) const;

private:
    void AddTargetMenu(Target target, const QString& title);
    void Choose(Target target, zelmediatypes::TimeDisplay display);

    struct Choice {
        zelmediatypes::TimeDisplay video = zelmediatypes::kTimeDisplay_2997DropTimecode;
        zelmediatypes::TimeDisplay audio = zelmediatypes::kTimeDisplay_AudioSamples48kHz;
    };
    Choice source_;
    Choice sequence_;
};

} // namespace host
