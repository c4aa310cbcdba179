#pragma once

#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TimeDisplay.h"

#include <QString>

#include <span>

namespace host {

// The displays a user can choose for video times (timecodes and frame
// numbers) and for audio times, in menu order.
std::span<const zelmediatypes::TimeDisplay> VideoTimeDisplays();
std::span<const zelmediatypes::TimeDisplay> AudioTimeDisplays();

// The localised menu name of a display, e.g. "29.97 fps Drop-Frame Timecode".
QString TimeDisplayName(zelmediatypes::TimeDisplay display);

// A frame rate as people write it: "25", "29.97", "23.976" (at most three decimals, no
// trailing zeros).
QString FrameRateText(const zelmediatypes::FrameRate& rate);

} // namespace host
