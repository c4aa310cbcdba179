// The panel's commands: its toolbar's (alignment, style toggles, music note,
// colour target) and the host's standard edit commands, which go to the
// caption text being edited.
#include "CaptionsView.h"

#include "CaptionCommandIds.h"
#include "CaptionEdit.h"
#include "CaptionsPane.h"
#include "CaptionsToolbar.h"

namespace HandlerCaptions {

namespace {

bool IsToolbarCommand(UIF::CommandID id) {
    return (id >= kCommand_JustifyLeft && id <= kCommand_JustifyRight) ||
           (id >= kCommand_Italicize && id <= kCommand_EdgeColor);
}

bool IsEditCommand(UIF::CommandID id) {
    switch (id) {
    case UIF::kCommand_Delete:
    case UIF::kCommand_Copy:
    case UIF::kCommand_Cut:
    case UIF::kCommand_Paste:
    case UIF::kCommand_SelectAll:
    case UIF::kCommand_Undo:
    case UIF::kCommand_Redo:
    case UIF::kCommand_Find:
        return true;
    default:
        return false;
    }
}

} // namespace

bool CaptionsView::FindCommandStatus(UIF::CommandID id, bool& enabled, bool&, bool&,
                                     zelcore::UTF16String&) {
    if (!IsToolbarCommand(id) && !IsEditCommand(id)) {
        return false;
    }
    return FindOwnCommandStatus(id, enabled);
}

bool CaptionsView::FindOwnCommandStatus(UIF::CommandID id, bool& enabled) {
    if (IsToolbarCommand(id)) {
        enabled = true;
        return true;
    }
    const CaptionEdit* text = pane_ ? pane_->GetFocusedTextControl() : nullptr;
    if (!text) {
        return false;
    }
    switch (id) {
    case UIF::kCommand_Delete:
        enabled = text->CanDelete();
        return true;
    case UIF::kCommand_Copy:
        enabled = text->CanCopy();
        return true;
    case UIF::kCommand_Cut:
        enabled = text->CanCut();
        return true;
    case UIF::kCommand_Paste:
        enabled = text->CanPaste();
        return true;
    case UIF::kCommand_Undo:
        enabled = text->CanUndo();
        return true;
    case UIF::kCommand_Redo:
        enabled = text->CanRedo();
        return true;
    default:
        // Select all and find keep the host's own status.
        return false;
    }
}

bool CaptionsView::ObeyCommand(const UIF::Command& command) {
    if (!pane_) {
        return false;
    }
    const UIF::CommandID id = command.GetID();
    switch (id) {
    case kCommand_JustifyLeft:
    case kCommand_JustifyCenter:
    case kCommand_JustifyRight:
        pane_->SetAlignment(
            static_cast<zelcaptioning::TextAlignmentType>(id - kCommand_JustifyLeft));
        return true;
    case kCommand_Bold:
        pane_->SetBold(!pane_->GetSelectionStyle().bold);
        return true;
    case kCommand_Italicize:
        pane_->SetItalic(!pane_->GetSelectionStyle().italic);
        return true;
    case kCommand_Underline:
        pane_->SetUnderline(!pane_->GetSelectionStyle().underline);
        return true;
    case kCommand_MusicNote:
        pane_->InsertMusicNote();
        return true;
    case kCommand_TextColor:
    case kCommand_BackgroundColor:
    case kCommand_EdgeColor:
        colorTarget_ = id == kCommand_TextColor         ? kColorTarget_Text
                       : id == kCommand_BackgroundColor ? kColorTarget_Background
                                                        : kColorTarget_Edge;
        UpdateEnabling();
        pane_->ResumeTextEditing();
        return true;
    default:
        return IsEditCommand(id) && ObeyEditCommand(id);
    }
}

bool CaptionsView::ObeyEditCommand(UIF::CommandID id) {
    if (id == UIF::kCommand_Find && toolbar_) {
        toolbar_->FilterBox().HandleControlRequest(zelui::controls::kControlRequest_Activate);
        return true;
    }
    CaptionEdit* text = pane_->GetFocusedTextControl();
    if (!text) {
        return false;
    }
    switch (id) {
    case UIF::kCommand_Delete:
        text->Delete();
        return true;
    case UIF::kCommand_Copy:
        text->Copy();
        return true;
    case UIF::kCommand_Cut:
        text->Cut();
        return true;
    case UIF::kCommand_Paste:
        text->Paste();
        return true;
    case UIF::kCommand_Undo:
        text->Undo();
        return true;
    case UIF::kCommand_Redo:
        text->Redo();
        return true;
    default:
        return false;
    }
}

} // namespace HandlerCaptions
