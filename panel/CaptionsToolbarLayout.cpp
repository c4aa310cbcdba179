// Where the toolbar's controls stand in each family, and which are enabled.
#include "CaptionsToolbar.h"

#include "CaptionCommandIds.h"

#include <initializer_list>
#include <tuple>

namespace HandlerCaptions {

namespace {

constexpr std::int32_t kFirstRowY = 3;
constexpr std::int32_t kSecondRowY = 33;
constexpr std::int32_t kThirdRowY = 60;
constexpr std::int32_t kLineHeightPx = 19;
constexpr std::int32_t kButtonPx = 20;
constexpr std::int32_t kGapPx = 2;
constexpr std::int32_t kDividerPx = 8;
constexpr std::int32_t kPositionFieldPx = 36;
constexpr std::int32_t kUnitLabelPx = 10;
constexpr std::int32_t kAxisLabelPx = 14;
constexpr std::int32_t kColorPickerPx = 150;
constexpr std::int32_t kGridPx =
    PositionGridControl::kCellsPerLine * PositionGridControl::kCellPitchPx -
    PositionGridControl::kGapPx;

using Controls = std::initializer_list<zelui::controls::UI_ControlView*>;

void Show(zelui::controls::UI_ControlView& control, bool visible) {
    control.SetVisible(visible);
}

} // namespace

void CaptionsToolbar::Place(zelui::controls::UI_ControlView& control, std::int32_t x,
                            std::int32_t y, std::int32_t width, std::int32_t height) {
    control.SetBounds(
        zelui::controls::UI_Rect::FromSize(static_cast<float>(x), static_cast<float>(y),
                                           static_cast<float>(width), static_cast<float>(height)));
}

void CaptionsToolbar::SetOpenCaptions(bool open) {
    openCaptions_ = open;
}

void CaptionsToolbar::Relayout(std::int32_t) {
    const bool open = openCaptions_;
    // First row: filter and stream for both; the font controls for open captions.
    Place(*filterBox_, 3, kFirstRowY, 167, kLineHeightPx + 1);
    Place(*streamLabel_, 171, kFirstRowY, 55, kLineHeightPx);
    Place(*streamPopup_, 226, kFirstRowY, 149, kLineHeightPx);
    Place(*fontLabel_, 379, kFirstRowY, 40, kLineHeightPx);
    Place(*fontFamilyPopup_, 421, kFirstRowY, 149, kLineHeightPx);
    Place(*fontWeightPopup_, 574, kFirstRowY, 100, kLineHeightPx);
    Place(*sizeLabel_, 678, kFirstRowY, 40, kLineHeightPx);
    Place(*sizeField_, 720, kFirstRowY, 40, kLineHeightPx);
    Place(*edgeLabel_, 764, kFirstRowY, 40, kLineHeightPx);
    Place(*edgeField_, 806, kFirstRowY, 40, kLineHeightPx);
    for (zelui::controls::UI_ControlView* control :
         Controls{fontLabel_.get(), fontFamilyPopup_.get(), fontWeightPopup_.get(),
                  sizeLabel_.get(), sizeField_.get(), edgeLabel_.get(), edgeField_.get()}) {
        Show(*control, open);
    }

    // Second row: the caption type for closed captions, then the buttons and colours.
    std::int32_t x = 3;
    Place(*typeLabel_, 0, kSecondRowY, 32, kLineHeightPx);
    Place(*typePopup_, 34, kSecondRowY, 99, kLineHeightPx);
    Show(*typeLabel_, !open);
    Show(*typePopup_, !open);
    if (!open) {
        x = 145;
    }
    auto placeButtons = [&](const std::vector<std::unique_ptr<UIF::PictureButton>>& buttons) {
        for (const std::unique_ptr<UIF::PictureButton>& button : buttons) {
            button->SetBounds(UIF::Rect::FromSize(x, kSecondRowY - 1, kButtonPx, kButtonPx));
            button->Show();
            x += kButtonPx + kGapPx;
        }
    };
    auto placeDivider = [&](std::size_t index) {
        Place(*dividers_[index], x, kSecondRowY - 1, kDividerPx, kButtonPx);
        x += kDividerPx + kGapPx;
    };
    placeButtons(alignButtons_);
    placeDivider(0);
    placeButtons(styleButtons_);
    placeDivider(1);
    placeButtons(colorButtons_);
    Place(*swatch_, x, kSecondRowY - 1, kButtonPx, kButtonPx);
    x += kButtonPx + kGapPx;
    colorPicker_->SetBounds(UIF::Rect::FromSize(x, kSecondRowY - 1, kColorPickerPx, kButtonPx));
    colorPicker_->Show();
    x += kColorPickerPx + kGapPx;
    Place(*opacityField_, x, kSecondRowY, 40, kLineHeightPx);
    x += 40;
    Place(*opacityPercent_, x, kSecondRowY, kUnitLabelPx, kLineHeightPx);
    x += kUnitLabelPx + kGapPx;
    placeDivider(2);

    // Closed captions place their block on the grid after the colours; open
    // captions on a third row of their own.
    auto placePosition =
        [&](PositionGridControl& grid, zelui::controls::UI_StaticText& xText,
            zelui::controls::UI_HotTextNumber& xField, zelui::controls::UI_StaticText* xUnit,
            zelui::controls::UI_StaticText& yText, zelui::controls::UI_HotTextNumber& yField,
            zelui::controls::UI_StaticText* yUnit, std::int32_t left, std::int32_t y) {
            std::int32_t at = left;
            Place(grid, at, y, kGridPx, kGridPx);
            at += kGridPx + 2 * kGapPx;
            for (auto [label, field, unit] :
                 {std::tuple{&xText, &xField, xUnit}, std::tuple{&yText, &yField, yUnit}}) {
                Place(*label, at, y, kAxisLabelPx, kLineHeightPx);
                at += kAxisLabelPx;
                Place(*field, at, y, kPositionFieldPx, kLineHeightPx);
                at += kPositionFieldPx;
                if (unit) {
                    Place(*unit, at, y, kUnitLabelPx, kLineHeightPx);
                    at += kUnitLabelPx;
                }
                at += kGapPx;
            }
        };
    placePosition(*positionGrid_, *columnLabel_, *columnField_, nullptr, *rowLabel_, *rowField_,
                  nullptr, x, kSecondRowY);
    placePosition(*openPositionGrid_, *xLabel_, *xPercentField_, xPercent_.get(), *yLabel_,
                  *yPercentField_, yPercent_.get(), 3, kThirdRowY);
    for (zelui::controls::UI_ControlView* control :
         Controls{positionGrid_.get(), columnLabel_.get(), columnField_.get(), rowLabel_.get(),
                  rowField_.get()}) {
        Show(*control, !open);
    }
    for (zelui::controls::UI_ControlView* control :
         Controls{openPositionGrid_.get(), xLabel_.get(), xPercentField_.get(), xPercent_.get(),
                  yLabel_.get(), yPercentField_.get(), yPercent_.get()}) {
        Show(*control, open);
    }
}

void CaptionsToolbar::UpdateEnabling(const Enabling& state) {
    const bool open = openCaptions_;
    const bool selected = state.selected;
    auto enable = [](zelui::controls::UI_ControlView& control, bool enabled) {
        control.SetDisabled(!enabled);
    };
    enable(*streamLabel_, state.hasStream);
    enable(*filterBox_, state.hasStream);
    enable(*streamPopup_, state.hasStream && streamPopup_->GetItemCount() >= 2);

    for (const std::unique_ptr<UIF::PictureButton>& button : alignButtons_) {
        button->SetEnabled(selected);
    }
    ButtonFor(kCommand_Bold)->SetEnabled(selected && state.boldAllowed && open);
    ButtonFor(kCommand_Italicize)->SetEnabled(selected && state.italicAllowed);
    ButtonFor(kCommand_Underline)->SetEnabled(selected && state.underlineAllowed);
    ButtonFor(kCommand_MusicNote)->SetEnabled(selected);
    ButtonFor(kCommand_TextColor)->SetEnabled(selected);
    ButtonFor(kCommand_BackgroundColor)->SetEnabled(selected);
    ButtonFor(kCommand_EdgeColor)->SetEnabled(selected && open);

    if (open) {
        for (zelui::controls::UI_ControlView* control :
             Controls{fontLabel_.get(), fontFamilyPopup_.get(), sizeLabel_.get(), sizeField_.get(),
                      edgeLabel_.get(), edgeField_.get(), openPositionGrid_.get(), xLabel_.get(),
                      xPercentField_.get(), xPercent_.get(), yLabel_.get(), yPercentField_.get(),
                      yPercent_.get()}) {
            enable(*control, selected);
        }
        enable(*fontWeightPopup_, selected && fontWeightPopup_->GetItemCount() >= 2);
        colorPicker_->SetEnabled(selected);
        enable(*opacityField_, selected && state.opacityEditable);
        enable(*opacityPercent_, selected && state.opacityEditable);
        return;
    }
    enable(*typeLabel_, selected);
    enable(*typePopup_, selected && typePopup_->GetItemCount() >= 2);
    for (zelui::controls::UI_ControlView* control :
         Controls{positionGrid_.get(), swatch_.get(), columnLabel_.get(), columnField_.get(),
                  rowLabel_.get()}) {
        enable(*control, selected);
    }
    enable(*rowField_, selected);
}

} // namespace HandlerCaptions
