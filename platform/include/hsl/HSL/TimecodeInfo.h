#pragma once

#include "UIF/HotTimecodeControl.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TimeDisplay.h"

namespace HSL {

// How a timecode control shows the times of media at `mediaRate` in the
// display format. A timecode display shows its own rate's frames; frame counts
// and audio displays count the media's frames. Times snap to frame starts
// unless the display counts audio units, or `alignToFrame` is false.
UIF::TimecodeInfo GetTimecodeInfo(zelmediatypes::TimeDisplay display,
                                  const zelmediatypes::FrameRate& mediaRate, bool alignToFrame);

} // namespace HSL
