#include "RowFont.h"

#include "TD/TitlerFontList.h"

namespace HandlerCaptions {
namespace {

constexpr const char16_t* kUnicodeFamily = u"Arial Unicode MS";

enum class FontProbe { kNotAsked, kPresent, kAbsent };

FontProbe& ProbeState() {
    static FontProbe state = FontProbe::kNotAsked;
    return state;
}

bool UnicodeFamilyPresent() {
    FontProbe& state = ProbeState();
    if (state == FontProbe::kNotAsked) {
        state = FontProbe::kAbsent;
        for (const TD::TitlerFontFamily& family : TD::GetTitlerFontList()) {
            if (family.familyName == kUnicodeFamily) {
                state = FontProbe::kPresent;
                break;
            }
        }
    }
    return state == FontProbe::kPresent;
}

} // namespace

void ApplyRowFont(zelui::controls::UI_TextEdit& control) {
    if (!UnicodeFamilyPresent()) {
        return;
    }
    zelui::controls::UI_TextFont font = control.GetFont();
    font.family = kUnicodeFamily;
    control.SetFont(font);
}

} // namespace HandlerCaptions
