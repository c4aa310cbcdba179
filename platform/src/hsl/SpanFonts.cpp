#include "SpanFonts.h"

#include "HSL/CaptionRendering.h"

namespace HSL::detail {

zelui::drawbot::FontSpec FontOf(const zelcaptioning::TextSpanAttributes& attributes) {
    zelui::drawbot::FontSpec font;
    const zelcore::UTF16String& family = attributes.GetFontName();
    font.family = family.empty() || zelcaptioning::TextSpanAttributes::IsGenericFontName(family)
                      ? kDefaultCaptionFontFamily
                      : family;
    font.sizePixels = attributes.GetFontSize() > 0.0f
                          ? attributes.GetFontSize()
                          : zelcaptioning::TextSpanAttributes::kDefaultFontSize;
    font.styleFlags = (attributes.IsBolded() ? zelui::drawbot::kFontStyle_Bold : 0u) |
                      (attributes.IsItalicized() ? zelui::drawbot::kFontStyle_Italic : 0u) |
                      (attributes.IsUnderlined() ? zelui::drawbot::kFontStyle_Underline : 0u);
    return font;
}

} // namespace HSL::detail
