#pragma once

#include <cstdint>

namespace ML {

// Names one frame request in the completion messages. Ids grow from 1 and are never reused
// while the process runs; 0 is never issued.
using RequestID = std::uint64_t;

// The size a frame is scaled to. The default, 0 x 0, asks for the media's own size.
struct FrameSize {
    int widthPx = 0;
    int heightPx = 0;

    bool IsMediaSize() const { return widthPx == 0 && heightPx == 0; }
    friend bool operator==(const FrameSize&, const FrameSize&) = default;
};

// What a request delivers.
enum class Refinement {
    // One message with the exact frame.
    kExactOnly,
    // When decoding has to start from a keyframe before the exact frame, that keyframe first (a
    // quick preview), then the exact frame.
    kKeyframeFirst,
};

} // namespace ML
