#include "DigitFont.h"

#include <algorithm>

namespace platform::media::DigitFont {
namespace {

constexpr Glyph kDigits[10] = {
    {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}, // 0
    {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E}, // 1
    {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}, // 2
    {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E}, // 3
    {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}, // 4
    {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E}, // 5
    {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}, // 6
    {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08}, // 7
    {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}, // 8
    {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C}, // 9
};
constexpr Glyph kColon = {0x00, 0x0C, 0x0C, 0x00, 0x0C, 0x0C, 0x00};
constexpr Glyph kSemicolon = {0x00, 0x0C, 0x0C, 0x00, 0x0C, 0x04, 0x08};
constexpr Glyph kPeriod = {0x00, 0x00, 0x00, 0x00, 0x00, 0x0C, 0x0C};
constexpr Glyph kMinus = {0x00, 0x00, 0x00, 0x1F, 0x00, 0x00, 0x00};

} // namespace

const Glyph* FindGlyph(char character) {
    if (character >= '0' && character <= '9') {
        return &kDigits[character - '0'];
    }
    switch (character) {
    case ':':
        return &kColon;
    case ';':
        return &kSemicolon;
    case '.':
        return &kPeriod;
    case '-':
        return &kMinus;
    default:
        return nullptr;
    }
}

void DrawText(VF::VideoFrame& frame, int xPx, int yPx, int scale, std::string_view text,
              std::array<std::uint8_t, 4> rgba) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        const Glyph* glyph = FindGlyph(text[index]);
        const int glyphLeftPx = xPx + static_cast<int>(index) * kAdvancePx * scale;
        for (int row = 0; glyph && row < kGlyphHeightPx; ++row) {
            for (int column = 0; column < kGlyphWidthPx; ++column) {
                if (((*glyph)[row] >> (kGlyphWidthPx - 1 - column) & 1) == 0) {
                    continue;
                }
                const int left = std::max(glyphLeftPx + column * scale, 0);
                const int right = std::min(glyphLeftPx + (column + 1) * scale, frame.GetWidthPx());
                const int top = std::max(yPx + row * scale, 0);
                const int bottom = std::min(yPx + (row + 1) * scale, frame.GetHeightPx());
                for (int y = top; y < bottom; ++y) {
                    std::uint8_t* pixel = frame.GetRow(y) + 4 * left;
                    for (int x = left; x < right; ++x, pixel += 4) {
                        std::copy(rgba.begin(), rgba.end(), pixel);
                    }
                }
            }
        }
    }
}

} // namespace platform::media::DigitFont
