// Font family and weight, and the colour lists people choose from: the
// toolbar controls whose items come from the system or the stream's format.
#include "CaptionsView.h"

#include "CaptionsPane.h"
#include "CaptionsToolbar.h"
#include "DLG/ColorPickerDialog.h"
#include "FontStyleNames.h"
#include "zelui/controls/UI_PopupMenu.h"

#include <cmath>
#include <map>

namespace HandlerCaptions {

namespace {

zelcore::UTF16String Normalised(zelcore::UTF16String styleName) {
    StripLeadingWeightWord(styleName);
    return styleName;
}

zelui::ui::UI_Color ToMenuColor(const zelcaptioning::CaptioningColor& color) {
    auto byte = [](float component) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0f, 1.0f) * 255.0f));
    };
    return {byte(color.red), byte(color.green), byte(color.blue), 255};
}

} // namespace

void CaptionsView::TieStyleControls() {
    CaptionsToolbar& bar = *toolbar_;
    bar.FontWeightPopup().NotifyWhenChanged(
        [this](const auto&) { WeightChosen(toolbar_->FontWeightPopup().GetValueString()); });
    bar.Swatch().NotifyWhenChanged([this](const auto&) { ShowLegalColors(); });
}

void CaptionsView::ShowFont(const caption_editor::StyleSummary& style) {
    CaptionsToolbar& bar = *toolbar_;
    const auto& fonts = bar.GetFonts();
    std::int32_t familyItem = -1;
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        if (fonts[i].familyName == style.fontName) {
            familyItem = static_cast<std::int32_t>(i);
        }
    }
    bar.FontFamilyPopup().SetValue(familyItem);
    if (familyItem != shownFamilyItem_) {
        shownFamilyItem_ = familyItem;
        bar.FontWeightPopup().RemoveAllItems();
        if (familyItem >= 0) {
            for (const zelcore::UTF16String& styleName :
                 fonts[static_cast<std::size_t>(familyItem)].styleNames) {
                bar.FontWeightPopup().AddItem(styleName);
            }
        }
    }
    const zelcore::UTF16String wanted = Normalised(StyleNameOf(style.bold, style.italic));
    std::int32_t weightItem = -1;
    for (std::int32_t i = 0; i < bar.FontWeightPopup().GetItemCount() && weightItem < 0; ++i) {
        if (Normalised(bar.FontWeightPopup().GetItemText(i)) == wanted) {
            weightItem = i;
        }
    }
    bar.FontWeightPopup().SetValue(weightItem);
}

void CaptionsView::WeightChosen(const zelcore::UTF16String& styleName) {
    if (!pane_) {
        return;
    }
    const StyleFlags wanted = StyleFlagsOf(styleName);
    const caption_editor::StyleSummary now = pane_->GetSelectionStyle();
    if (wanted.bold != now.bold) {
        pane_->SetBold(wanted.bold);
    }
    if (wanted.italic != now.italic) {
        pane_->SetItalic(wanted.italic);
    }
}

// A closed-caption format allows only certain colours: the swatch offers them
// (and, for backgrounds, the allowed opacities) in a menu.
void CaptionsView::ShowLegalColors() {
    if (!pane_ || IsOpenCaptions() || !pane_->GetItemList().GetCurrentCaption()) {
        return;
    }
    const zelcaptioning::StreamFormat format = pane_->GetCaptionSource().GetChosenFormat();
    const auto type = static_cast<zelcaptioning::CaptioningColor::ColorType>(colorTarget_);
    std::map<zelcaptioning::CaptioningColor, zelcore::UTF16String> colors;
    std::map<float, zelcore::UTF16String> opacities;
    zelcaptioning::CaptioningColor::EnumerateLegalColors(format, type, colors);
    if (colorTarget_ == kColorTarget_Background) {
        zelcaptioning::CaptioningColor::EnumerateLegalOpacities(format, type, opacities);
    }
    zelcaptioning::CaptioningColor current = colorTarget_ == kColorTarget_Text ? textColor_
                                             : colorTarget_ == kColorTarget_Background
                                                 ? backgroundColor_
                                                 : edgeColor_;
    std::vector<zelui::controls::UI_MenuItem> items;
    std::vector<zelcaptioning::CaptioningColor> itemColors;
    for (const auto& [color, name] : colors) {
        zelcaptioning::CaptioningColor opaqueCurrent = current;
        opaqueCurrent.SetAlpha(color.Alpha());
        items.push_back({name,
                         opaqueCurrent == color ? zelui::controls::kMenuItem_Checked
                                                : zelui::controls::kMenuItem_Plain,
                         ToMenuColor(color)});
        itemColors.push_back(color);
    }
    std::vector<float> itemOpacities;
    if (!opacities.empty()) {
        items.push_back({{}, zelui::controls::kMenuItem_Separator, std::nullopt});
        for (const auto& [opacity, name] : opacities) {
            items.push_back({name,
                             current.Alpha() == opacity ? zelui::controls::kMenuItem_Checked
                                                        : zelui::controls::kMenuItem_Plain,
                             std::nullopt});
            itemOpacities.push_back(opacity);
        }
    }
    if (items.empty()) {
        return;
    }
    const std::int32_t chosen = zelui::controls::UI_DoPopupMenu(items, toolbar_->Swatch());
    if (chosen < 0) {
        return;
    }
    const auto index = static_cast<std::size_t>(chosen);
    if (index < itemColors.size()) {
        // The colour keeps the current opacity; transparent is stored as nothing at all.
        const float alpha = current.Alpha();
        current = itemColors[index];
        current.SetAlpha(alpha);
    } else if (index > itemColors.size()) {
        current.SetAlpha(itemOpacities[index - itemColors.size() - 1]);
    } else {
        return;
    }
    if (current.IsTransparent()) {
        current = zelcaptioning::CaptioningColor(0, 0, 0, 0);
    }
    pane_->SetColor(current, colorTarget_);
}

// Open captions take any colour: the swatch opens the host's colour dialog.
void CaptionsView::PickColorInDialog() {
    zelui::ui::UI_Color chosen;
    if (DLG::ColorPickerDialog::PickColor(toolbar_->ColorPicker().GetColor(), chosen)) {
        toolbar_->ColorPicker().SetColor(chosen);
        ColorPicked(chosen);
    }
}

} // namespace HandlerCaptions
