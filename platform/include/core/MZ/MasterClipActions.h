#pragma once

#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "zelmediatypes/TimeDisplay.h"

namespace MZ::MasterClipActions {

// The video time display a clip's times start in: the one chosen for the clip
// (BE::MasterClipSettings::videoTimeDisplay), else the timecode of the clip's
// own frame rate (drop-frame at 29.97 and 59.94; frame numbers for a rate no
// timecode counts). kTimeDisplay_Unknown for an empty reference.
zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip);

// The audio time display a clip's times start in: 48 kHz samples;
// kTimeDisplay_Unknown for an empty reference.
zelmediatypes::TimeDisplay
GetAudioTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip);

} // namespace MZ::MasterClipActions
