// Colours, opacities and block positions: the toolbar controls that edit
// values of the selection rather than toggle them.
#include "CaptionsView.h"

#include "CaptionsPane.h"
#include "CaptionsToolbar.h"
#include "KSL/StationUtils.h"
#include "UIF/Colors.h"
#include "zelcaptioning/Position.h"

#include <cmath>

namespace HandlerCaptions {

namespace {

zelcaptioning::CaptioningColor FromPicker(const zelui::ui::UI_Color& color, float alpha) {
    return {color.red / 255.0f, color.green / 255.0f, color.blue / 255.0f, alpha};
}

// A missing or transparent colour shows as the window's background.
zelui::ui::UI_Color ToPicker(const zelcaptioning::CaptioningColor& color) {
    if (color.IsTransparent()) {
        return UIF::GetColor(UIF::kColor_WindowBackground);
    }
    auto byte = [](float component) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0f, 1.0f) * 255.0f));
    };
    return {byte(color.red), byte(color.green), byte(color.blue), 255};
}

// The column or row (from 1) of a position coordinate on a grid of `count`.
std::int32_t GridNumber(const zelcaptioning::Rational& value, std::int32_t count) {
    return static_cast<std::int32_t>(zelcaptioning::ValueWithScale(value, count, true)) + 1;
}

// The cell index (0, 1 or 2) that shows a column or row among first..last.
std::int32_t CellIndexOf(std::int32_t value, std::int32_t first, std::int32_t last) {
    return value == last ? 2 : value == first ? 0 : 1;
}

// The column or row a cell index (0, 1 or 2) stands for among first..last.
std::int32_t ValueOfCell(std::int32_t cell, std::int32_t first, std::int32_t last) {
    return cell == 0 ? first : cell == 2 ? last : (first + last + 1) / 2;
}

} // namespace

void CaptionsView::TieColorAndPositionControls() {
    CaptionsToolbar& bar = *toolbar_;
    KSL::StationUtils::AddListener(bar.ColorPicker().GetStationID(), this);
    bar.OpacityField().NotifyWhenChangedInteractively([this](const auto& message) {
        if (message.GetChangeMessage() == zelui::controls::kInteractiveChange_Final) {
            OpacityChosen(toolbar_->OpacityField().GetValue() / 100.0f);
        }
    });
    auto fields = [this](const auto& message) {
        if (message.GetChangeMessage() == zelui::controls::kInteractiveChange_Final) {
            GridFieldsChanged(
                static_cast<std::int32_t>(std::lround(toolbar_->ColumnField().GetValue())),
                static_cast<std::int32_t>(std::lround(toolbar_->RowField().GetValue())));
        }
    };
    bar.ColumnField().NotifyWhenChangedInteractively(fields);
    bar.RowField().NotifyWhenChangedInteractively(fields);
    bar.PositionGrid().NotifyWhenChanged([this](const auto&) {
        if (IsOpenCaptions()) {
            return;
        }
        std::int32_t cell = -1;
        std::int32_t row = -1;
        toolbar_->PositionGrid().GetSelection(cell, row);
        const std::int32_t columns =
            static_cast<std::int32_t>(toolbar_->ColumnField().GetMaximum());
        const std::int32_t rows = static_cast<std::int32_t>(toolbar_->RowField().GetMaximum());
        toolbar_->ColumnField().SetValue(ValueOfCell(cell, 1, columns));
        toolbar_->RowField().SetValue(ValueOfCell(row, 1, rows));
        GridFieldsChanged(ValueOfCell(cell, 1, columns), ValueOfCell(row, 1, rows));
    });
}

float CaptionsView::OpacityOf(ColorTarget target) const {
    return target == kColorTarget_Text         ? textOpacity_
           : target == kColorTarget_Background ? backgroundOpacity_
                                               : edgeOpacity_;
}

// A new edge needs a width to be seen: a tenth of the font size.
void CaptionsView::GiveTheEdgeAWidth() {
    if (edgeWidth_ == 0.0f && pane_) {
        edgeWidth_ = fontSize_ / 10.0f;
        pane_->SetEdgeWidth(edgeWidth_);
    }
}

void CaptionsView::ColorPicked(const zelui::ui::UI_Color& color) {
    float alpha = OpacityOf(colorTarget_);
    if (colorTarget_ == kColorTarget_Edge) {
        if (alpha == 0.0f) {
            alpha = 1.0f;
        }
        GiveTheEdgeAWidth();
    }
    pane_->SetColor(FromPicker(color, alpha), colorTarget_);
}

void CaptionsView::OpacityChosen(float opacity) {
    zelcaptioning::CaptioningColor color = FromPicker(toolbar_->ColorPicker().GetColor(), opacity);
    switch (colorTarget_) {
    case kColorTarget_Text:
        textOpacity_ = 1.0f;
        return;
    case kColorTarget_Background:
        backgroundOpacity_ = opacity;
        break;
    case kColorTarget_Edge:
        if (edgeOpacity_ == 0.0f && opacity > 0.0f) {
            GiveTheEdgeAWidth();
            color = edgeColor_;
            color.SetAlpha(opacity);
        }
        edgeOpacity_ = opacity;
        break;
    }
    pane_->SetColor(color, colorTarget_);
}

void CaptionsView::GridFieldsChanged(std::int32_t column, std::int32_t row) {
    if (column == shownColumn_ && row == shownRow_) {
        return;
    }
    const std::int32_t deltaColumns = column - shownColumn_;
    const std::int32_t deltaRows = row - shownRow_;
    shownColumn_ = column;
    shownRow_ = row;
    const std::int32_t columns = static_cast<std::int32_t>(toolbar_->ColumnField().GetMaximum());
    const std::int32_t rows = static_cast<std::int32_t>(toolbar_->RowField().GetMaximum());
    toolbar_->PositionGrid().SetSelection(CellIndexOf(column, 1, columns),
                                          CellIndexOf(row, 1, rows));
    if (column != 0 || row != 0) {
        pane_->MoveParagraph(deltaColumns, deltaRows);
    }
}

void CaptionsView::ShowSelectionColors(const caption_editor::StyleSummary& style) {
    textColor_ = style.textColor;
    backgroundColor_ = style.backgroundColor;
    edgeColor_ = style.edgeColor;
    textOpacity_ = 1.0f;
    backgroundOpacity_ = style.backgroundColor.Alpha();
    edgeOpacity_ = style.edgeColor.Alpha();
    fontSize_ = style.fontSize;
    edgeWidth_ = style.edgeWidth;
    const zelcaptioning::CaptioningColor& shown = colorTarget_ == kColorTarget_Text ? textColor_
                                                  : colorTarget_ == kColorTarget_Background
                                                      ? backgroundColor_
                                                      : edgeColor_;
    const zelui::ui::UI_Color picker = ToPicker(shown);
    toolbar_->Swatch().SetValue(
        {picker.red / 255.0f, picker.green / 255.0f, picker.blue / 255.0f, 1.0f});
    if (!(IsOpenCaptions() && eyedropperActive_)) {
        toolbar_->ColorPicker().SetColor(picker);
    }
    toolbar_->OpacityField().SetValue(OpacityOf(colorTarget_) * 100.0f);
    if (style.position != zelcaptioning::kPosition_Uninitialized && !IsOpenCaptions()) {
        const std::int32_t columns =
            static_cast<std::int32_t>(toolbar_->ColumnField().GetMaximum());
        const std::int32_t rows = static_cast<std::int32_t>(toolbar_->RowField().GetMaximum());
        shownColumn_ = GridNumber(style.position.GetX(), columns);
        shownRow_ = GridNumber(style.position.GetY(), rows);
        toolbar_->ColumnField().SetValue(shownColumn_);
        toolbar_->RowField().SetValue(shownRow_);
        toolbar_->PositionGrid().SetSelection(CellIndexOf(shownColumn_, 1, columns),
                                              CellIndexOf(shownRow_, 1, rows));
    }
}

bool CaptionsView::HandleColorPickerMessage(const KSL::Message& message) {
    if (const auto* changed = message.As<UIF::ColorPickerControlChangedMessage>()) {
        if (pane_) {
            ColorPicked(changed->GetColor());
        }
        return true;
    }
    if (message.As<UIF::ColorPickerSwatchClickedMessage>()) {
        if (pane_ && IsOpenCaptions()) {
            PickColorInDialog();
        }
        return true;
    }
    if (message.As<UIF::ColorPickerSwatchStartEyedropperModeMessage>()) {
        eyedropperActive_ = true;
        return true;
    }
    if (message.As<UIF::ColorPickerSwatchEndEyedropperModeMessage>()) {
        eyedropperActive_ = false;
        return true;
    }
    return false;
}

} // namespace HandlerCaptions
