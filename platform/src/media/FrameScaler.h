#pragma once

#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"

struct AVFrame;
struct SwsContext;

namespace platform::media {

// Converts decoded pictures to RGBA frames of a requested size with libswscale, keeping its
// conversion context between calls of the same shape. Not thread-safe: one per decoder.
class FrameScaler {
public:
    FrameScaler() = default;
    FrameScaler(const FrameScaler&) = delete;
    FrameScaler& operator=(const FrameScaler&) = delete;
    ~FrameScaler();

    // `size` 0 x 0 keeps the picture's own size. Throws MediaError when libswscale refuses the
    // conversion (an unsupported pixel format).
    VF::VideoFrame Scale(const AVFrame& picture, ML::FrameSize size);

private:
    SwsContext* context_ = nullptr;
};

} // namespace platform::media
