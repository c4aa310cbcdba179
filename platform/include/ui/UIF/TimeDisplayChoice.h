#pragma once

#include "KSL/ImmutableString.h"
#include "zelmediatypes/TimeDisplay.h"

namespace UIF {

// The time display a person chose (in a timecode control's menu or the host's
// View menu), kept per display station (kStation_SourceTimeDisplayChanged or
// kStation_SequenceTimeDisplayChanged) so that a view made later starts from
// it. Records the choice, then broadcasts it on the station as the video or
// the audio time display change message, by the kind of display.
void AnnounceTimeDisplayChoice(const KSL::StationID& station, zelmediatypes::TimeDisplay display);

// The last video (or audio) display announced on the station;
// kTimeDisplay_Unknown while none has been.
zelmediatypes::TimeDisplay GetChosenVideoTimeDisplay(const KSL::StationID& station);
zelmediatypes::TimeDisplay GetChosenAudioTimeDisplay(const KSL::StationID& station);

// Forgets every choice (for the host's shutdown and between tests).
void ForgetTimeDisplayChoices();

} // namespace UIF
