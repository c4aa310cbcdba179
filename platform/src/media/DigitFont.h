#pragma once

#include "VF/VideoFrame.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace platform::media::DigitFont {

// A 5 x 7 pixel font of the characters timecode labels use: digits and ":;.-". Drawn by the
// media workers, which have no font machinery of Qt to call on.
inline constexpr int kGlyphWidthPx = 5;
inline constexpr int kGlyphHeightPx = 7;
// The advance from one character to the next, a pixel of space included.
inline constexpr int kAdvancePx = kGlyphWidthPx + 1;

// Rows top first; bit 4 is the leftmost pixel.
using Glyph = std::array<std::uint8_t, kGlyphHeightPx>;

// Null for a character outside the font.
const Glyph* FindGlyph(char character);

// Draws the text with its top-left corner at (xPx, yPx), each font pixel a square of
// `scale` frame pixels; characters outside the font advance as spaces, and whatever falls
// outside the frame is clipped.
void DrawText(VF::VideoFrame& frame, int xPx, int yPx, int scale, std::string_view text,
              std::array<std::uint8_t, 4> rgba);

} // namespace platform::media::DigitFont
