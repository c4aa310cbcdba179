#pragma once

#include <compare>
#include <cstdint>
#include <string>

namespace platform::media {

// Identifies a cached frame: which media, the start of the clip frame asked for, and the size.
struct FrameCacheKey {
    // "file:" and the path, or "generated:" and what the generated picture depends on.
    std::string mediaIdentity;
    std::int64_t frameStartTicks = 0;
    int widthPx = 0;
    int heightPx = 0;

    friend auto operator<=>(const FrameCacheKey&, const FrameCacheKey&) = default;
};

} // namespace platform::media
