#include "FontStyleNames.h"

#include "zelcaptioning/TextSpanAttributes.h"

#include <array>
#include <string_view>

namespace HandlerCaptions {

using zelcaptioning::TextSpanAttributes;

bool StripLeadingWeightWord(zelcore::UTF16String& styleName) {
    static constexpr std::array<std::u16string_view, 5> kWeightWords = {
        u"Ultra Light", u"Light", u"Medium", u"Demi Bold", u"Heavy"};
    const std::u16string_view name = zelcore::View(styleName);
    for (const std::u16string_view word : kWeightWords) {
        if (name.starts_with(word)) {
            std::size_t cut = word.size();
            while (cut < name.size() && name[cut] == u' ') {
                ++cut;
            }
            styleName.erase(0, cut);
            return true;
        }
    }
    return false;
}

StyleFlags StyleFlagsOf(const zelcore::UTF16String& styleName) {
    if (styleName == TextSpanAttributes::kFontStyleString_Regular) {
        return {false, false};
    }
    if (styleName == TextSpanAttributes::kFontStyleString_Italic) {
        return {false, true};
    }
    if (styleName == TextSpanAttributes::kFontStyleString_Bold) {
        return {true, false};
    }
    if (styleName == TextSpanAttributes::kFontStyleString_BoldItalic) {
        return {true, true};
    }
    const std::u16string_view name = zelcore::View(styleName);
    return {name.find(zelcore::View(TextSpanAttributes::kFontStyleString_Bold)) !=
                std::u16string_view::npos,
            name.ends_with(zelcore::View(TextSpanAttributes::kFontStyleString_Italic))};
}

zelcore::UTF16String StyleNameOf(bool bold, bool italic) {
    if (bold) {
        return italic ? TextSpanAttributes::kFontStyleString_BoldItalic
                      : TextSpanAttributes::kFontStyleString_Bold;
    }
    return italic ? TextSpanAttributes::kFontStyleString_Italic
                  : TextSpanAttributes::kFontStyleString_Regular;
}

} // namespace HandlerCaptions
