#pragma once

#include "VF/VideoFrame.h"

namespace VF::VideoFrameManipulators {

// A deep copy of the frame (pixels, time, accuracy, error) that the caller may draw on while the
// original, perhaps held by the frame cache, stays as it was. Costs one allocation and a copy
// of the pixels.
MutableVideoFrameRef CopyFrame(const VideoFrame& frame);

} // namespace VF::VideoFrameManipulators
