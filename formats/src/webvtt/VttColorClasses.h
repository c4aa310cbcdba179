#pragma once

#include "zelcaptioning/CaptioningColor.h"

#include <optional>
#include <string_view>

namespace captionformats::webvtt {

// The WebVTT default colour classes: "white", "lime", "cyan", "red", "yellow",
// "magenta", "blue" and "black" (text), each also with "bg_" (background).
std::optional<zelcaptioning::CaptioningColor> ColorOfClass(std::string_view name);

// The class name of an opaque colour that is one of the eight, else empty.
std::string_view ClassOfColor(const zelcaptioning::CaptioningColor& color);

} // namespace captionformats::webvtt
