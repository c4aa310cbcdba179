#pragma once

#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace captionformats::ttml {

// The document's timing parameters (ttp:frameRate, ttp:frameRateMultiplier,
// ttp:tickRate) with TTML's defaults. The reader keeps them within bounds
// (frame rate 1 to 1000, multiplier terms 1 to 10000, tick rate 1 to 10^12).
struct TimingParameters {
    std::int64_t frameRate = 30;
    std::int64_t multiplierNumerator = 1;
    std::int64_t multiplierDenominator = 1;
    std::int64_t tickRate = 1;
};

// A TTML time expression in media time: clock time "hh:mm:ss",
// "hh:mm:ss.fraction" or "hh:mm:ss:frames(.subframes)" (the frames add to the
// seconds at the effective frame rate, frameRate × multiplier), or offset time
// "number(.fraction)" followed by h, m, s, ms, f or t. Fractions count to the
// microsecond. Nothing when malformed.
std::optional<zelmediatypes::TickTime> ParseTimeExpression(std::string_view text,
                                                           const TimingParameters& parameters);

} // namespace captionformats::ttml
