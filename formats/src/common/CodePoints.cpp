#include "common/CodePoints.h"

namespace captionformats {

std::u32string CodePoints(const zelcore::UTF16String& text) {
    std::u32string points;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t unit = text[i];
        if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] <= 0xDFFF) {
            unit = 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00);
            ++i;
        }
        points += unit;
    }
    return points;
}

} // namespace captionformats
