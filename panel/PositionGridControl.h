#pragma once

#include "zelcaptioning/ParagraphStyleAttributes.h"
#include "zelui/controls/UI_InteractiveControlView.h"
#include "zelui/ui/UI_Color.h"
#include "zelui/ui/UI_Cursor.h"

#include <cstdint>

namespace HandlerCaptions {

// The toolbar's three-by-three grid of cells, one per anchor of a caption
// block, top-left to bottom-right. A press of the first button inside the
// control selects the cell under it and notifies the listeners
// (UI_ControlChangedMessage); setting the selection from code notifies no one.
// A selected column or row of -1 means no cell; a press in the control but
// beyond the third cell gives 3 or more, which AnchorFromCell maps to no anchor.
// The grid takes the keyboard focus: an arrow key moves the selection one cell
// (from the centre when no cell is selected) and notifies; a key that would
// leave the grid does nothing.
class PositionGridControl : public zelui::controls::UI_InteractiveControlView {
public:
    static constexpr std::int32_t kCellSizePx = 5;
    static constexpr std::int32_t kGapPx = 2;
    static constexpr std::int32_t kCellPitchPx = kCellSizePx + kGapPx;
    static constexpr std::int32_t kCellsPerLine = 3;

    PositionGridControl();

    void GetSelection(std::int32_t& column, std::int32_t& row) const;
    // Redraws; sends no message.
    void SetSelection(std::int32_t column, std::int32_t row);
    // Selects the cell that shows the anchor (caption_editor::CellFromAnchor).
    void SetSelectionFromAnchor(zelcaptioning::AnchorID anchor);

    // kCursor_Default leaves the toolkit's cursor over the control.
    void SetCursor(zelui::ui::UI_CursorID cursor);

    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override;
    bool UI_DoMouseEvent(const zelui::ui::UI_MouseEvent& event) override;
    bool UI_DoKeyboardEvent(const zelui::ui::UI_KeyboardEvent& event) override;
    bool UI_DoCursor(const zelui::ui::UI_CursorRequest& request) override;

private:
    static constexpr float kFirstLineThicknessPx = 1.0f;
    static constexpr float kSecondLineThicknessPx = 1.0f;

    zelui::ui::UI_CursorID cursor_ = zelui::ui::kCursor_Default;
    std::int32_t selectedColumn_ = -1;
    std::int32_t selectedRow_ = -1;
    // Taken from the colour table when the control is made.
    zelui::ui::UI_Color cellColor_;
    zelui::ui::UI_Color lineColor_;
    zelui::ui::UI_Color disabledCellColor_;
    zelui::ui::UI_Color disabledLineColor_;
};

} // namespace HandlerCaptions
