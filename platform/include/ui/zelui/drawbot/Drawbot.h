#pragma once

#include "zelcore/UTF16String.h"
#include "zelcore/geom/Rect.h"
#include "zelui/ui/UI_Color.h"

#include <cstdint>
#include <memory>

namespace zelui::drawbot {

enum FontStyleFlags : std::uint32_t {
    kFontStyle_Regular = 0,
    kFontStyle_Bold = 1,
    kFontStyle_Italic = 2,
    kFontStyle_Underline = 4,
};

// A font by family and style name as the system's font list names them
// (TD::GetTitlerFontList), at a size in pixels. When the style name is empty
// or the family has no such style, the style flags choose bold and italic.
struct FontSpec {
    zelcore::UTF16String family;
    zelcore::UTF16String styleName;
    float sizePixels = 12.0f;
    std::uint32_t styleFlags = kFontStyle_Regular;
};

struct TextMetrics {
    float widthPixels = 0.0f;  // advance of the whole string
    float heightPixels = 0.0f; // line spacing: ascent + descent + leading
    float ascentPixels = 0.0f;
    float descentPixels = 0.0f;
};

// A surface to measure and draw text and shapes on: a control's window while
// it is drawn, or a measuring surface without pixels (CreateMeasuring).
class Drawbot {
public:
    // Measures as the screen draws (96 pixels per inch, no hinting), so widths
    // are the same on every machine with the same fonts.
    static std::unique_ptr<Drawbot> CreateMeasuring();

    Drawbot(const Drawbot&) = delete;
    Drawbot& operator=(const Drawbot&) = delete;
    ~Drawbot();

    // A string without line breaks; line breaks measure as spaces.
    TextMetrics MeasureString(std::u16string_view text, const FontSpec& font) const;

    // No-ops on a measuring surface.
    void FillRect(const zelcore::geom::RectT<float>& rect, const ui::UI_Color& color);
    void DrawString(std::u16string_view text, const FontSpec& font, float x, float baselineY,
                    const ui::UI_Color& color);

    struct Impl;
    explicit Drawbot(std::unique_ptr<Impl> impl);

private:
    std::unique_ptr<Impl> impl_;
};

} // namespace zelui::drawbot
