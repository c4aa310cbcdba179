#pragma once

#include "VF/VideoFrame.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TickTime.h"

#include <string>
#include <string_view>

namespace platform::media {

// Where a generated frame's timecode is drawn: the label's top-left corner and the size of a
// font pixel (DigitFont), in frame pixels.
struct TimecodePlacement {
    int xPx = 0;
    int yPx = 0;
    int scale = 1;
};

// The picture of the generated test source: 75% colour bars over the upper two thirds, reversed
// bars below them, and in the black band at the bottom the frame's timecode, white and
// centred. Everything but the timecode scales with the frame, so a thumbnail shows the same
// picture small.
class TestSourceRenderer {
public:
    // The label of the frame starting at `frameStart`: a timecode at the clip's rate,
    // drop-frame at 29.97 and 59.94 fps as broadcast media count them, or the frame number at
    // a rate without a timecode of its own.
    static std::string TimecodeLabel(zelmediatypes::TickTime frameStart,
                                     const zelmediatypes::FrameRate& rate);

    static TimecodePlacement PlaceTimecode(std::string_view label, int widthPx, int heightPx);

    // Throws std::invalid_argument for a size VF::VideoFrame refuses.
    static VF::VideoFrame Render(zelmediatypes::TickTime frameStart,
                                 const zelmediatypes::FrameRate& rate, int widthPx, int heightPx);
};

} // namespace platform::media
