#pragma once

#include "zelui/controls/UI_TextEdit.h"

namespace HandlerCaptions {

class CaptionsItem;
class CaptionsPane;

// The text control of a caption row (of whichever row it shows at the time:
// controls move between rows as they scroll in and out of sight). Tab and
// Shift+Tab move editing to the next or previous row; Escape, while the
// control has the focus, puts the caption back as it was and leaves text
// editing. The pane's reactions are posted, so they run after the key event
// has returned.
class CaptionEdit : public zelui::controls::UI_TextEdit {
public:
    explicit CaptionEdit(CaptionsPane& pane);
    ~CaptionEdit() override;

    CaptionsItem* GetRow() const { return row_; }
    void SetRow(CaptionsItem* row) { row_ = row; }
    // The user changed the text: the row hands the change to the pane.
    void RowTextChanged();

    bool UI_DoKeyboardEvent(const zelui::ui::UI_KeyboardEvent& event) override;
    bool UI_DoPreKeyboardEvent(const zelui::ui::UI_KeyboardEvent& event) override;
    void UI_FocusChanged(zelui::controls::UI_FocusChange change) override;

private:
    CaptionsPane& pane_;
    CaptionsItem* row_ = nullptr;
};

} // namespace HandlerCaptions
