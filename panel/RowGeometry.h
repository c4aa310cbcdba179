#pragma once

#include <cstdint>

namespace HandlerCaptions::row_geometry {

// Where things stand inside a 75-pixel caption row, in pixels from its top
// edge: the thumbnail and the In line start kInsetPx down; the Out line
// stands kOutLineOffsetPx below the In line.
inline constexpr std::int32_t kInsetPx = 6;
inline constexpr std::int32_t kOutLineOffsetPx = 53;
inline constexpr std::int32_t kLineHeightPx = 17;
inline constexpr std::int32_t kTimeControlWidthPx = 85;

} // namespace HandlerCaptions::row_geometry
