#include "HSL/TimecodeInfo.h"

namespace HSL {

UIF::TimecodeInfo GetTimecodeInfo(zelmediatypes::TimeDisplay display,
                                  const zelmediatypes::FrameRate& mediaRate, bool alignToFrame) {
    UIF::TimecodeInfo info;
    info.timeDisplay = display;
    const auto displayRate = zelmediatypes::VideoFrameRate(display);
    info.frameDuration = displayRate ? displayRate->FrameDuration() : mediaRate.FrameDuration();
    const bool audioUnits = display == zelmediatypes::kTimeDisplay_AudioSamples48kHz ||
                            display == zelmediatypes::kTimeDisplay_Milliseconds;
    info.alignToFrame = alignToFrame && !audioUnits;
    return info;
}

} // namespace HSL
