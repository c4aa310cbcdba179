#pragma once

#include "zelcaptioning/CaptioningColor.h"

#include <optional>
#include <string>
#include <string_view>

namespace captionformats {

// A colour as HTML and CSS write it: "#rgb", "#rrggbb", "#rrggbbaa", "rgb(r,g,b)",
// "rgba(r,g,b,a)" (a from 0 to 255, as TTML has it) or one of the sixteen basic
// colour names, case-insensitive. Components become value / 255.
std::optional<zelcaptioning::CaptioningColor> ParseCssColor(std::string_view text);

// "#rrggbb", each component rounded to the nearest of 256 steps; alpha ignored.
std::string ToHexRgb(const zelcaptioning::CaptioningColor& color);

} // namespace captionformats
