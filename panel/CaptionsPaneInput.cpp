// Selecting rows with the mouse and the keyboard.
#include "CaptionsPane.h"

#include "CaptionsView.h"
#include "zelcore/Localization.h"
#include "zelui/ui/UI_Events.h"

#include <string>

namespace HandlerCaptions {

namespace {

constexpr std::int32_t kKeyUp = -38;
constexpr std::int32_t kKeyDown = -40;
constexpr std::int32_t kKeyHome = -36;
constexpr std::int32_t kKeyEnd = -35;
constexpr std::int32_t kKeyPageUp = -33;
constexpr std::int32_t kKeyPageDown = -34;

} // namespace

bool CaptionsPane::MouseDown(const zelui::ui::UI_MouseEvent& event) {
    if (event.GetY() < 0) {
        return false;
    }
    const auto index = static_cast<std::int32_t>(
        (scrollOffsetPx_ + static_cast<std::uint32_t>(event.GetY())) / kRowPitchPx);
    if (index >= rows_->GetCount()) {
        return true;
    }
    CommitEdits();
    SelectRow(index, kSelectNotify_Mouse);
    rows_->ResetCaretState();
    isTextEditActive_ = false;
    SetFocus();
    return true;
}

bool CaptionsPane::KeyDown(std::int32_t keyCode, std::uint32_t) {
    if (rows_->CurrentRowHasFocus()) {
        return false;
    }
    const std::int32_t selected = rows_->GetCurrentIndex();
    const std::int32_t visibleRows = (GetClientRect().Height() + kRowPitchPx - 1) / kRowPitchPx;
    std::int32_t target = 0;
    switch (keyCode) {
    case kKeyUp:
        target = selected - 1;
        break;
    case kKeyDown:
        target = selected + 1;
        break;
    case kKeyHome:
        target = 0;
        break;
    case kKeyEnd:
        target = rows_->GetCount() - 1;
        break;
    case kKeyPageUp:
        target = selected - visibleRows;
        break;
    case kKeyPageDown:
        target = selected + visibleRows;
        break;
    default:
        return false;
    }
    if (SelectRow(target, kSelectNotify_Keyboard) != selected) {
        rows_->ResetCaretState();
        isTextEditActive_ = false;
    }
    return true;
}

bool CaptionsPane::MouseWheel(const zelui::ui::UI_MouseEvent& event) {
    return view_ && view_->ScrollByWheel(event.GetWheelDelta());
}

void CaptionsPane::AnnounceSelectedRow() {
    const CaptionsItem* row = rows_->GetCurrentRow();
    if (!row) {
        SetAccessibleFocusItem({});
        return;
    }
    zelcore::UTF16String name =
        zelcore::Localize("$$$/Corvala/Handlers/CaptionView/RowName=Caption");
    name += zelcore::ToUTF16(" " + std::to_string(rows_->GetCurrentIndex() + 1) + ": ");
    name += row->GetPlainText();
    SetAccessibleFocusItem(name);
}

} // namespace HandlerCaptions
