#pragma once

#include "UIF/Geometry.h"

namespace VF {
class VideoFrame;
}

namespace UIF {

class DC;

class VideoFrameBlit {
public:
    // Draws the frame scaled (smoothly, aspect as given) into the destination.
    // An error frame or an empty one draws nothing, so what lies under the
    // destination (a placeholder decal) stays.
    static void BlitFrame(DC& dc, const VF::VideoFrame& frame, const Rect& destination);
};

} // namespace UIF
