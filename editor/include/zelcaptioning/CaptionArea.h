#pragma once

#include <cstdint>

namespace zelcaptioning {

// Open captions are laid out inside a caption area centred in the frame, this
// fraction of the frame's width and height, so that lines stay clear of the
// picture's edges. The engine, the measuring and the renderer share it.
inline constexpr float kCaptionAreaScale = 0.8f;

// The caption area's extent for a frame extent in pixels, truncated toward zero
// (single-precision product, as every layout of the area computes it).
inline std::int32_t CaptionAreaExtent(std::int32_t frameExtentPx) {
    return static_cast<std::int32_t>(static_cast<float>(frameExtentPx) * kCaptionAreaScale);
}

} // namespace zelcaptioning
