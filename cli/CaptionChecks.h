#pragma once

#include "zelcaptioning/Caption.h"

#include <optional>
#include <string>
#include <vector>

namespace captioncli {

struct CheckLimits {
    double maxCharactersPerSecond = 20.0;
    double minDurationSeconds = 0.7;
    // Check CEA-608 legality too (grid, roll-up depth, transmission time).
    bool cea608 = false;
};

// One problem, of one caption or (for transmission) of a run of captions.
struct Finding {
    std::optional<std::size_t> captionIndex; // in begin-time order, from 0
    std::optional<zelmediatypes::TickTime> begin;
    std::string kind;    // a short, stable name for machines: "reading-rate", "overlap", ...
    std::string message; // for people
};

// Reading rate above the limit (characters other than spaces, per second of
// display), captions shorter than the limit, captions that begin before the
// one before ends, and with `cea608`: lines past 32 columns, lines off the 15
// rows, roll-up captions with more lines than their depth, and captions our
// SCC encoder cannot send in time.
std::vector<Finding> CheckCaptions(const std::vector<zelcaptioning::CaptionPtr>& captions,
                                   const CheckLimits& limits);

} // namespace captioncli
