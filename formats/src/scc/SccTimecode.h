#pragma once

#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace captionformats::scc {

// SCC runs at 29.97 frames per second (30000 / 1001).
inline constexpr zelmediatypes::TickTime kFrameDuration{zelmediatypes::kTicksPerSecond * 1001 /
                                                        30000};

struct ParsedTimecode {
    std::int64_t frame = 0; // frames since 00:00:00:00
    bool dropFrame = false;
};

// "HH:MM:SS:FF" (non-drop) or "HH:MM:SS;FF" (drop-frame; '.' and ',' are
// taken as ';' as some tools write them). Drop-frame labels that do not exist
// (frames 00 and 01 of a minute not divisible by ten) and frames past 29 are
// refused.
std::optional<ParsedTimecode> ParseTimecode(std::string_view text);

// The label of a frame count, drop-frame with ';' or non-drop with ':'.
std::string FormatTimecode(std::int64_t frame, bool dropFrame);

zelmediatypes::TickTime TimeOfFrame(std::int64_t frame);
// The frame holding `time` (times before zero hold frame 0).
std::int64_t FrameAtTime(zelmediatypes::TickTime time);

} // namespace captionformats::scc
