#include "CaptionEdit.h"

#include "CaptionsItem.h"
#include "CaptionsPane.h"
#include "zelui/ui/UI_Events.h"
#include "zelui/ui/UI_NodeManager.h"

namespace HandlerCaptions {

using zelui::ui::KeyModifier;
using zelui::ui::UI_KeyboardEvent;

CaptionEdit::CaptionEdit(CaptionsPane& pane)
    : UI_TextEdit(zelui::controls::kTextEdit_MultiLine, zelui::controls::kControlAlignment_Left)
    , pane_(pane) {
    if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get()) {
        manager->AddKeyboardEventFilterNode(this);
    }
}

CaptionEdit::~CaptionEdit() = default;

void CaptionEdit::RowTextChanged() {
    if (row_) {
        row_->TextChanged();
    }
}

bool CaptionEdit::UI_DoKeyboardEvent(const UI_KeyboardEvent& event) {
    // Meta (bit 8) does not count; Shift alone reverses; any other modifier types normally.
    const std::uint32_t modifiers =
        event.GetModifiers() & ~std::uint32_t{zelui::ui::kKeyModifier_Meta};
    if (event.GetKeyboardCode() == zelui::ui::kKeyboardCode_FieldAdvance &&
        event.GetType() == zelui::ui::kKeyEventType_Press &&
        (modifiers == 0 || modifiers == zelui::ui::kKeyModifier_Shift)) {
        const std::int32_t delta = modifiers == zelui::ui::kKeyModifier_Shift ? -1 : 1;
        CaptionsPane* pane = &pane_;
        pane_.PostToMainThread([pane, delta] { pane->MoveEditingRow(delta); });
        return true;
    }
    return UI_TextEdit::UI_DoKeyboardEvent(event);
}

bool CaptionEdit::UI_DoPreKeyboardEvent(const UI_KeyboardEvent& event) {
    if (!event.IsShortcut(zelui::ui::kKeyboardCode_Cancel, 0) || !HasFocus()) {
        return false;
    }
    if (event.GetType() == zelui::ui::kKeyEventType_Press) {
        CaptionsPane* pane = &pane_;
        pane_.PostToMainThread([pane] { pane->LeaveTextEditing(); });
    }
    return true;
}

void CaptionEdit::UI_FocusChanged(zelui::controls::UI_FocusChange change) {
    UI_TextEdit::UI_FocusChanged(change);
    if (change == zelui::controls::kFocusChange_Gained) {
        if (row_) {
            pane_.RowTextFocused(*row_);
        }
    } else if (!HasFocus()) {
        ScrollToBegin();
    }
}

} // namespace HandlerCaptions
