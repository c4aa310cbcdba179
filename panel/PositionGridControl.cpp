#include "PositionGridControl.h"

#include "caption_editor/AnchorGrid.h"
#include "zelui/drawbot/Drawbot.h"
#include "zelui/ui/UI_Events.h"

#include <cmath>

namespace HandlerCaptions {
namespace {

using zelui::controls::UI_Rect;
using zelui::ui::UI_Color;

// Cells are laid out from the bounds' top-left truncated to whole pixels, the
// same origin the mouse positions are measured from.
struct GridOrigin {
    std::int32_t left;
    std::int32_t top;
};

GridOrigin OriginOf(const UI_Rect& bounds) {
    return {static_cast<std::int32_t>(bounds.left), static_cast<std::int32_t>(bounds.top)};
}

UI_Rect CellRect(const GridOrigin& origin, std::int32_t column, std::int32_t row) {
    return UI_Rect::FromSize(
        static_cast<float>(origin.left + column * PositionGridControl::kCellPitchPx),
        static_cast<float>(origin.top + row * PositionGridControl::kCellPitchPx),
        PositionGridControl::kCellSizePx, PositionGridControl::kCellSizePx);
}

// The lines that join a cell to the next cell of its row and of its column,
// each centred on the cell's side; the last cell of a line has no next.
void DrawConnectors(zelui::drawbot::Drawbot& drawbot, const UI_Rect& cell, std::int32_t column,
                    std::int32_t row, float thickness, const UI_Color& color) {
    const float centreOffset = std::floor(cell.Width() / 2.0f - thickness / 2.0f);
    constexpr std::int32_t kLast = PositionGridControl::kCellsPerLine - 1;
    if (column < kLast) {
        drawbot.FillRect(UI_Rect::FromSize(cell.right, cell.top + centreOffset,
                                           PositionGridControl::kGapPx, thickness),
                         color);
    }
    if (row < kLast) {
        drawbot.FillRect(UI_Rect::FromSize(cell.left + centreOffset, cell.bottom, thickness,
                                           PositionGridControl::kGapPx),
                         color);
    }
}

void DrawOutline(zelui::drawbot::Drawbot& drawbot, const UI_Rect& cell, float thickness,
                 const UI_Color& color) {
    drawbot.FillRect(UI_Rect::FromSize(cell.left, cell.top, cell.Width(), thickness), color);
    drawbot.FillRect(UI_Rect::FromSize(cell.left, cell.bottom - thickness, cell.Width(), thickness),
                     color);
    drawbot.FillRect(UI_Rect::FromSize(cell.left, cell.top, thickness, cell.Height()), color);
    drawbot.FillRect(UI_Rect::FromSize(cell.right - thickness, cell.top, thickness, cell.Height()),
                     color);
}

} // namespace

PositionGridControl::PositionGridControl()
    : cellColor_(zelui::ui::GetColor(zelui::ui::kUIColor_GridCell))
    , lineColor_(zelui::ui::GetColor(zelui::ui::kUIColor_GridLine))
    , disabledCellColor_(zelui::ui::GetColor(zelui::ui::kUIColor_GridCellDisabled))
    , disabledLineColor_(zelui::ui::GetColor(zelui::ui::kUIColor_GridLineDisabled)) {
    SetTakesKeyboardFocus(true);
}

void PositionGridControl::GetSelection(std::int32_t& column, std::int32_t& row) const {
    column = selectedColumn_;
    row = selectedRow_;
}

void PositionGridControl::SetSelection(std::int32_t column, std::int32_t row) {
    selectedColumn_ = column;
    selectedRow_ = row;
    Invalidate();
}

void PositionGridControl::SetSelectionFromAnchor(zelcaptioning::AnchorID anchor) {
    int column = 0;
    int row = 0;
    caption_editor::CellFromAnchor(anchor, column, row);
    SetSelection(column, row);
}

void PositionGridControl::SetCursor(zelui::ui::UI_CursorID cursor) {
    if (cursor != cursor_) {
        cursor_ = cursor;
        Invalidate();
    }
}

void PositionGridControl::UI_Draw(zelui::drawbot::Drawbot& drawbot) {
    const bool disabled = IsDisabled();
    const UI_Color& cellColor = disabled ? disabledCellColor_ : cellColor_;
    const UI_Color& lineColor = disabled ? disabledLineColor_ : lineColor_;
    const GridOrigin origin = OriginOf(GetBounds());

    for (std::int32_t row = 0; row < kCellsPerLine; ++row) {
        for (std::int32_t column = 0; column < kCellsPerLine; ++column) {
            const UI_Rect cell = CellRect(origin, column, row);
            drawbot.FillRect(
                UI_Rect::FromSize(cell.left, cell.top, cell.Width(), kFirstLineThicknessPx),
                lineColor);
            drawbot.FillRect(
                UI_Rect::FromSize(cell.left, cell.top, kFirstLineThicknessPx, cell.Height()),
                lineColor);
            DrawConnectors(drawbot, cell, column, row, kFirstLineThicknessPx, lineColor);
        }
    }
    for (std::int32_t row = 0; row < kCellsPerLine; ++row) {
        for (std::int32_t column = 0; column < kCellsPerLine; ++column) {
            const UI_Rect cell = CellRect(origin, column, row);
            if (column == selectedColumn_ && row == selectedRow_) {
                drawbot.FillRect(cell, cellColor);
            } else {
                DrawOutline(drawbot, cell, kSecondLineThicknessPx, cellColor);
            }
            DrawConnectors(drawbot, cell, column, row, kSecondLineThicknessPx, cellColor);
        }
    }
}

bool PositionGridControl::UI_DoMouseEvent(const zelui::ui::UI_MouseEvent& event) {
    if (IsDisabled()) {
        return false;
    }
    UI_InteractiveControlView::UI_DoMouseEvent(event);
    if (event.GetType() != zelui::ui::kMouseEventType_Down ||
        event.GetButton() != zelui::ui::kMouseButton_First) {
        return false;
    }
    selectedColumn_ = -1;
    selectedRow_ = -1;
    const auto x = static_cast<std::int32_t>(event.GetX());
    const auto y = static_cast<std::int32_t>(event.GetY());
    const UI_Rect bounds = GetBounds();
    if (!bounds.Contains(static_cast<float>(x), static_cast<float>(y))) {
        return false;
    }
    const GridOrigin origin = OriginOf(bounds);
    selectedColumn_ = (x - origin.left) / kCellPitchPx;
    selectedRow_ = (y - origin.top) / kCellPitchPx;
    Invalidate();
    NotifyChanged();
    return true;
}

bool PositionGridControl::UI_DoKeyboardEvent(const zelui::ui::UI_KeyboardEvent& event) {
    if (IsDisabled() || event.GetType() != zelui::ui::kKeyEventType_Press ||
        event.GetModifiers() != 0) {
        return false;
    }
    std::int32_t columnStep = 0;
    std::int32_t rowStep = 0;
    switch (event.GetKeyboardCode()) {
    case zelui::ui::kKeyboardCode_Left:
        columnStep = -1;
        break;
    case zelui::ui::kKeyboardCode_Right:
        columnStep = 1;
        break;
    case zelui::ui::kKeyboardCode_Up:
        rowStep = -1;
        break;
    case zelui::ui::kKeyboardCode_Down:
        rowStep = 1;
        break;
    default:
        return false;
    }
    const bool inGrid = selectedColumn_ >= 0 && selectedColumn_ < kCellsPerLine &&
                        selectedRow_ >= 0 && selectedRow_ < kCellsPerLine;
    const std::int32_t column = (inGrid ? selectedColumn_ : 1) + columnStep;
    const std::int32_t row = (inGrid ? selectedRow_ : 1) + rowStep;
    if (column < 0 || column >= kCellsPerLine || row < 0 || row >= kCellsPerLine) {
        return true;
    }
    SetSelection(column, row);
    NotifyChanged();
    return true;
}

bool PositionGridControl::UI_DoCursor(const zelui::ui::UI_CursorRequest& request) {
    if (cursor_ == zelui::ui::kCursor_Default || IsDisabled() || request.GetTarget() != this) {
        return false;
    }
    zelui::ui::UI_ResourceManager::SetCursor(cursor_);
    return true;
}

} // namespace HandlerCaptions
