#pragma once

#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QMenu>

#include <functional>

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

    using CurrentSequence = std::function<KSL::InterfaceRef<BE::ISequence>()>;
    using ApplySettings =
        std::function<void(const KSL::InterfaceRef<BE::ISequence>&, const BE::SequenceSettings&)>;
    // The Sequence menu shows and changes the time displays of the current
    // sequence's settings (one setting with the sequence settings dialog's);
    // with no current sequence it keeps a choice of its own.
    void SetSequenceAccess(CurrentSequence current, ApplySettings apply);
    // Checks the current sequence's displays; the menu does it as it opens.
    void Refresh();

    zelmediatypes::TimeDisplay GetVideoTimeDisplay(Target target) const;
    zelmediatypes::TimeDisplay GetAudioTimeDisplay(Target target) const;

private:
    void AddTargetMenu(Target target, const QString& title);
    void Choose(Target target, zelmediatypes::TimeDisplay display);
    void CheckChoices(Target target);

    struct Choice {
        zelmediatypes::TimeDisplay video = zelmediatypes::kTimeDisplay_2997DropTimecode;
        zelmediatypes::TimeDisplay audio = zelmediatypes::kTimeDisplay_AudioSamples48kHz;
    };
    Choice source_;
    Choice sequence_;
    QMenu* sourceMenu_ = nullptr;
    QMenu* sequenceMenu_ = nullptr;
    CurrentSequence currentSequence_;
    ApplySettings applySettings_;
};

} // namespace host
