#include "VF/VideoFrameManipulators.h"

#include <memory>

namespace VF::VideoFrameManipulators {

MutableVideoFrameRef CopyFrame(const VideoFrame& frame) {
    return std::make_shared<VideoFrame>(frame);
}

} // namespace VF::VideoFrameManipulators
