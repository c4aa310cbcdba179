// Every change the pane makes to the stream: the commit of the engine's
// working copy under an undo name, the style and layout actions, adding,
// deleting and retiming captions.
#include "CaptionsPane.h"

#include "CaptionsView.h"
#include "HSL/CaptionRendering.h"
#include "MZ/Captioning.h"
#include "UIF/MessageBox.h"
#include "UIF/Workspace.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace HandlerCaptions {

using zelmediatypes::TickTime;

namespace {

constexpr const char16_t* kMessageTitle =
    u"$$$/Corvala/Handlers/Captions/NoRoomForCaptionTitle=Closed Captioning";
constexpr const char16_t* kNoRoomText =
    u"$$$/Corvala/Handlers/Captions/NoRoomForCaption=There is not enough time available to "
    u"insert a new caption between the current caption and the next caption in the list.";
constexpr const char16_t* kDuplicateTimeTitle =
    u"$$$/Corvala/Handlers/Captions/CaptionDuplicateTimeTitle=Closed Captioning";
constexpr const char16_t* kDuplicateTimeText =
    u"$$$/Corvala/Handlers/Captions/CaptionDuplicateTime=The selected caption cannot be moved "
    u"because another caption already exists in the specified location.";

constexpr const char16_t* kBoldName = u"$$$/Corvala/Handlers/Captions/BoldText=Bold Caption Text";
constexpr const char16_t* kItalicName =
    u"$$$/Corvala/Handlers/Captions/ItalicizeText=Italicize Caption Text";
constexpr const char16_t* kUnderlineName =
    u"$$$/Corvala/Handlers/Captions/UnderlineText=Underline Caption Text";
constexpr const char16_t* kFontFamilyName =
    u"$$$/Corvala/Handlers/Captions/FontFamilyText=Caption Text Font Family";
constexpr const char16_t* kFontSizeName =
    u"$$$/Corvala/Handlers/Captions/FontSizeText=Caption Text Font Size";
constexpr const char16_t* kColorName =
    u"$$$/Corvala/Handlers/Captions/ColorText=Change Caption Color";
constexpr const char16_t* kEdgeWidthName =
    u"$$$/Corvala/Handlers/Captions/ChangeTextEdgeWidth=Change Text Edge Width";
constexpr const char16_t* kAlignName =
    u"$$$/Corvala/Handlers/Captions/AlignText=Align Caption Text";
constexpr const char16_t* kGridPositionName =
    u"$$$/Corvala/Handlers/Captions/UpdateOpenGridPosition=Position Block Update";
constexpr const char16_t* kMoveParagraphName =
    u"$$$/Corvala/Handlers/Captions/MoveParagraph=Move Caption Paragraph";
constexpr const char16_t* kMoveOpenParagraphName =
    u"$$$/Corvala/Handlers/Captions/MoveOpenParagraph=Move Open Caption Paragraph";
constexpr const char16_t* kCaptionTypeName =
    u"$$$/Corvala/Handlers/Captions/SetCaptionType=Set Caption Type";

constexpr TickTime kOneSecond{zelmediatypes::kTicksPerSecond};

// The pending name of a step that collected more than one kind of action (or
// none by name): such a step gets the empty name.
const zelcore::UTF16String& MixedActions() {
    static const zelcore::UTF16String mixed(1, u'*');
    return mixed;
}

std::uint64_t EnginePosition(std::int64_t position) {
    return static_cast<std::uint64_t>(std::max<std::int64_t>(0, position));
}

void ShowRefusal(const char16_t* text, const char16_t* title) {
    UIF::MessageBoxW(text, title, UIF::MBFlag::kOK, UIF::MBIcon::kWarning, UIF::MBResult::kOK);
}

// Counts a call into the stream for as long as it runs.
class NotificationScope {
public:
    explicit NotificationScope(std::int32_t& depth)
        : depth_(depth) {
        ++depth_;
    }
    ~NotificationScope() { --depth_; }
    NotificationScope(const NotificationScope&) = delete;
    NotificationScope& operator=(const NotificationScope&) = delete;

private:
    std::int32_t& depth_;
};

} // namespace

void CaptionsPane::CommitCaptionEdit(bool undoableNow, const zelcore::UTF16String& actionName) {
    if (!editor_->IsModified()) {
        return;
    }
    if (const zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get();
        manager && manager->HasModalWindow()) {
        return;
    }
    isCommitting_ = true;
    if (!actionName.empty() && actionName != pendingActionName_) {
        pendingActionName_ = pendingActionName_.empty() ? actionName : MixedActions();
    }
    if (undoableNow && pendingActionName_.empty()) {
        pendingActionName_ = MixedActions();
    }
    const zelcaptioning::CaptionPtr host = editor_->GetHostCaption();
    const zelcaptioning::CaptionPtr working = editor_->GetCaption();
    if (stream_ && host && working && stream_->FindCaptionIndex(host.get())) {
        MZ::Captioning captioning(stream_);
        NotificationScope scope(changeNotificationDepth_);
        if (undoableNow) {
            // Back to the state the step starts from, then forward as one named step.
            captioning.ReplaceCaption(host, editor_->GetSavedCaption(), false, {});
            if (pendingActionName_ == MixedActions()) {
                pendingActionName_.clear();
            }
            captioning.ReplaceCaption(host, working, true, pendingActionName_);
            std::int64_t start = 0;
            std::int64_t end = 0;
            rows_->GetSelectionRange(start, end);
            editor_->Reload();
            rows_->SetSelectionRange(start, end);
            editor_->SetModified(false);
            pendingActionName_.clear();
        } else {
            captioning.ReplaceCaption(host, working, false, {});
        }
    }
    isCommitting_ = false;
}

void CaptionsPane::ReadSelectionRange(std::int64_t& start, std::int64_t& end) {
    if (const CaptionsItem* row = rows_->GetCurrentRow(); row && row->TextHasFocus()) {
        row->GetEngineSelection(start, end);
        rows_->SetSelectionRange(start, end);
    }
    rows_->GetSelectionRange(start, end);
}

CaptionEdit* CaptionsPane::GetFocusedTextControl() const {
    const CaptionsItem* row = rows_->GetCurrentRow();
    return row && row->TextHasFocus() ? row->GetTextControl() : nullptr;
}

caption_editor::StyleSummary CaptionsPane::GetSelectionStyle() {
    std::int64_t start = 0;
    std::int64_t end = 0;
    ReadSelectionRange(start, end);
    if (!editor_->GetCaption()) {
        return {};
    }
    // An empty range outside text editing means the caption as a whole.
    if (!isTextEditActive_ && start == end) {
        end = -1;
    }
    return editor_->GetStyleSummary(EnginePosition(start),
                                    end < 0 ? std::numeric_limits<std::uint64_t>::max()
                                            : EnginePosition(end));
}

void CaptionsPane::InsertMusicNote() {
    CaptionsItem* row = rows_->GetCurrentRow();
    if (!row || !editor_->GetCaption() || row->GetCaption() != editor_->GetHostCaption()) {
        return;
    }
    std::int64_t start = 0;
    std::int64_t end = 0;
    ReadSelectionRange(start, end);
    const std::uint64_t caret = EnginePosition(start);
    editor_->InsertText(zelcore::UTF16String(1, u'\u266A'), caret);
    RefreshCaptionLayout();
    CommitCaptionEdit(!isTextEditActive_, {});
    row->RefreshFromCaption();
    rows_->SetSelectionRange(start + 1, start + 1);
    ResumeTextEditing();
}

void CaptionsPane::ResumeTextEditing() {
    if (!isTextEditActive_) {
        return;
    }
    std::int64_t start = 0;
    std::int64_t end = 0;
    rows_->GetSelectionRange(start, end);
    rows_->StartTextEditing(start, end);
}

template <typename Operation>
void CaptionsPane::RunStyleAction(const char16_t* actionName, bool needsCaption, bool resumeEditing,
                                  bool refreshLayout, Operation operation) {
    if (needsCaption && !rows_->GetCurrentCaption()) {
        return;
    }
    if (!editor_->GetCaption()) {
        return;
    }
    const bool undoableNow = !isTextEditActive_;
    std::int64_t start = 0;
    std::int64_t end = 0;
    if (const CaptionsItem* row = rows_->GetCurrentRow(); row && row->TextHasFocus()) {
        row->GetEngineSelection(start, end);
        rows_->SetSelectionRange(start, end);
    }
    rows_->GetSelectionRange(start, end);
    const std::uint64_t from = static_cast<std::uint64_t>(start);
    const std::uint64_t to =
        end < 0 ? std::numeric_limits<std::uint64_t>::max() : static_cast<std::uint64_t>(end);
    operation(from, to);
    if (refreshLayout) {
        RefreshCaptionLayout();
    }
    CommitCaptionEdit(undoableNow, actionName);
    if (isTextEditActive_ && resumeEditing) {
        rows_->StartTextEditing(start, end);
    }
    PostEditRefresh();
}

void CaptionsPane::SetBold(bool bold) {
    RunStyleAction(kBoldName, false, true, true,
                   [&](auto from, auto to) { editor_->SetBold(bold, from, to); });
}

void CaptionsPane::SetItalic(bool italic) {
    RunStyleAction(kItalicName, false, true, IsOpenCaptions(),
                   [&](auto from, auto to) { editor_->SetItalic(italic, from, to); });
}

void CaptionsPane::SetUnderline(bool underline) {
    RunStyleAction(kUnderlineName, false, true, false,
                   [&](auto from, auto to) { editor_->SetUnderline(underline, from, to); });
}

void CaptionsPane::SetFontFamily(const zelcore::UTF16String& family) {
    RunStyleAction(kFontFamilyName, false, true, true,
                   [&](auto from, auto to) { editor_->SetFontName(family, from, to); });
}

void CaptionsPane::SetFontSize(float size) {
    RunStyleAction(kFontSizeName, false, true, true,
                   [&](auto from, auto to) { editor_->SetFontSize(size, from, to); });
}

void CaptionsPane::SetColor(const zelcaptioning::CaptioningColor& color, std::int32_t target) {
    RunStyleAction(kColorName, false, true, false,
                   [&](auto from, auto to) { editor_->SetColor(color, target, from, to); });
}

void CaptionsPane::SetEdgeWidth(float width) {
    RunStyleAction(kEdgeWidthName, false, true, false,
                   [&](auto from, auto to) { editor_->SetEdgeWidth(width, from, to); });
}

void CaptionsPane::SetAlignment(zelcaptioning::TextAlignmentType alignment) {
    RunStyleAction(kAlignName, false, true, false,
                   [&](auto from, auto to) { editor_->SetAlignment(alignment, from, to); });
}

void CaptionsPane::SetGridPosition(std::uint32_t column, std::uint32_t row) {
    RunStyleAction(kGridPositionName, true, false, false, [&](auto from, auto to) {
        editor_->SetBlockAnchor(static_cast<std::int32_t>(column), static_cast<std::int32_t>(row),
                                from, to);
    });
}

void CaptionsPane::MoveParagraph(std::int32_t deltaColumns, std::int32_t deltaRows) {
    RunStyleAction(kMoveParagraphName, true, true, false, [&](auto from, auto to) {
        editor_->MoveBlock(deltaColumns, deltaRows, from, to);
    });
}

void CaptionsPane::MoveOpenParagraph(double x, double y) {
    RunStyleAction(kMoveOpenParagraphName, true, true, false,
                   [&](auto from, auto to) { editor_->PlaceParagraphs(x, y, from, to); });
}

void CaptionsPane::SetCaptionType(zelcaptioning::CaptionType type) {
    RunStyleAction(kCaptionTypeName, true, true, false,
                   [&](auto, auto) { editor_->SetCaptionType(type); });
}

void CaptionsPane::CommitRowText(const zelcaptioning::CaptionPtr& caption,
                                 const zelcore::UTF16String& oldText,
                                 const zelcore::UTF16String& newText, std::uint64_t position) {
    if (caption != rows_->GetCurrentCaption() || caption != editor_->GetHostCaption() ||
        oldText == newText) {
        return;
    }
    editor_->ReplaceText(oldText, newText, position);
    RefreshCaptionLayout();
    CommitCaptionEdit(false, {});
}

void CaptionsPane::AddCaptionAfterCurrent() {
    if (!stream_) {
        return;
    }
    FlushPendingEdit();
    zelcaptioning::CaptionPtr added(new zelcaptioning::Caption());
    const std::int32_t current = rows_->GetCurrentIndex();
    TickTime begin{};
    std::int32_t insertAt = 0;
    if (current >= 0 && current < rows_->GetCount()) {
        const zelcaptioning::CaptionPtr currentCaption = rows_->At(current)->GetCaption();
        begin = currentCaption->GetEndTime();
        insertAt = current + 1;
        if (insertAt < rows_->GetCount() &&
            rows_->At(insertAt)->GetCaption()->GetBeginTime() < begin + kOneSecond) {
            ShowRefusal(kNoRoomText, kMessageTitle);
            return;
        }
        // The new caption takes the style of the current caption's last span.
        *added = *currentCaption;
        while (added->GetNumParagraphs() > 1) {
            added->RemoveCaptionTextParagraph(added->GetCaptionTextParagraph(0));
        }
        if (added->GetNumParagraphs() == 1) {
            const zelcaptioning::CaptionTextParagraphPtr paragraph =
                added->GetCaptionTextParagraph(0);
            while (paragraph->GetNumSpans() > 1) {
                paragraph->RemoveCaptionTextSpan(paragraph->GetCaptionTextSpan(0));
            }
            if (paragraph->GetNumSpans() == 1) {
                paragraph->GetCaptionTextSpan(0)->SetCaptionText({});
            }
        }
    }
    added->SetBeginTime(begin);
    added->SetEndTime(begin + kOneSecond);
    rows_->Insert(insertAt, std::make_shared<CaptionsItem>(*this, added));
    rows_->SetCurrentIndex(-1);
    {
        NotificationScope scope(changeNotificationDepth_);
        MZ::Captioning(stream_).AddCaption(added);
        SetFocus();
    }
    needsToolbarRelayout_ = true;
    SelectRow(insertAt, kSelectNotify_Silent);
    RelayoutAfterRowCountChange();
}

void CaptionsPane::DeleteCurrentCaption() {
    const zelcaptioning::CaptionPtr caption = rows_->GetCurrentCaption();
    if (!caption || !stream_) {
        return;
    }
    FlushPendingEdit();
    const std::int32_t index = rows_->GetCurrentIndex();
    rows_->At(index)->ReleaseControls();
    rows_->SetCurrentIndex(-1);
    rows_->Remove(index);
    RelayoutAfterRowCountChange();
    needsToolbarRelayout_ = true;
    {
        NotificationScope scope(changeNotificationDepth_);
        MZ::Captioning(stream_).RemoveCaption(caption, false);
        SetFocus();
    }
    SelectRow(rows_->Clamp(index), kSelectNotify_Silent);
    if (rows_->IsEmpty()) {
        GiveCaptionToEditor();
    }
}

bool CaptionsPane::MoveCaption(const zelcaptioning::CaptionPtr& caption, TickTime newBegin,
                               TickTime duration) {
    if (!stream_) {
        return false;
    }
    MZ::Captioning captioning(stream_);
    const TickTime newEnd = newBegin + duration;
    std::vector<zelcaptioning::CaptionPtr> captions;
    captioning.GetCaptionsInTimeRange(TickTime{}, newEnd, captions);
    TickTime applied = duration;
    for (std::size_t i = 0; i < captions.size(); ++i) {
        const zelcaptioning::Caption& other = *captions[i];
        const TickTime otherBegin = other.GetBeginTime();
        const TickTime otherEnd = other.GetEndTime();
        if (captions[i] == caption) {
            if (otherBegin <= newBegin && newEnd <= otherEnd) {
                applied = std::min(otherEnd - newBegin, applied);
                break;
            }
            continue;
        }
        // A new begin may meet another caption's end; a new end may not meet a begin.
        const bool overlaps = (otherBegin <= newBegin && newBegin < otherEnd) ||
                              (otherBegin <= newEnd && newEnd <= otherEnd) ||
                              (newBegin <= otherBegin && otherEnd <= newEnd);
        if (overlaps) {
            ShowRefusal(kDuplicateTimeText, kDuplicateTimeTitle);
            rebuildPending_ = true;
            RestartDeferredTimer();
            return false;
        }
        const bool previousEndsBefore = i == 0 || captions[i - 1]->GetEndTime() <= newBegin;
        if (previousEndsBefore && newBegin < otherBegin) {
            applied = std::min(otherBegin - newBegin, duration);
            break;
        }
    }
    PostToMainThread(
        [this, caption, newBegin, applied] { ApplyCaptionTimes(caption, newBegin, applied); });
    return true;
}

void CaptionsPane::ApplyCaptionTimes(const zelcaptioning::CaptionPtr& caption, TickTime newBegin,
                                     TickTime duration) {
    if (!stream_ || !stream_->FindCaptionIndex(caption.get())) {
        return;
    }
    FlushPendingEdit();
    NotificationScope scope(changeNotificationDepth_);
    if (caption != rows_->GetCurrentCaption()) {
        const std::int32_t index = rows_->IndexOf(caption.get());
        if (index >= 0) {
            SelectRow(index, kSelectNotify_Silent);
        }
    }
    MZ::Captioning(stream_).UpdateCaption(caption, newBegin, duration, false,
                                          source_.GetRowTimeDisplay());
    rebuildPending_ = true;
    RestartDeferredTimer();
}

void CaptionsPane::MoveEditingRow(std::int32_t delta) {
    const std::int32_t before = rows_->GetCurrentIndex();
    const std::int32_t after = SelectRow(before + delta, kSelectNotify_Keyboard);
    if (after != before) {
        isTextEditActive_ = true;
        rows_->StartTextEditing(0, -1);
    }
}

void CaptionsPane::LeaveTextEditing() {
    if (!rows_->GetCurrentCaption()) {
        return;
    }
    if (editor_->IsModified()) {
        editor_->Revert();
        editor_->SetModified(true);
        CommitCaptionEdit(false, {});
        editor_->SetModified(false);
        pendingActionName_.clear();
    }
    isTextEditActive_ = true;
    SetFocus();
    PostEditRefresh();
}

void CaptionsPane::RowTextFocused(const CaptionsItem& row) {
    const std::int32_t index = rows_->IndexOf(row.GetCaption().get());
    if (index >= 0 && index != rows_->GetCurrentIndex()) {
        SelectRow(index, kSelectNotify_Mouse);
    }
    isTextEditActive_ = true;
}

// Open captions are laid out by their measured lines: after a change of text
// or of what a line measures, the working copy's lines are placed again.
void CaptionsPane::RefreshCaptionLayout() {
    if (IsOpenCaptions() && editor_->GetCaption()) {
        UIF::Workspace* workspace = UIF::Workspace::Instance();
        UIF::WorkspaceWindow* window = workspace ? workspace->GetPtr() : nullptr;
        if (zelui::drawbot::Drawbot* drawbot = window ? window->GetDrawbot() : nullptr) {
            HSL::RefreshCaptionSizeInfo(editor_->GetCaption(), *drawbot);
        }
        editor_->GetCaption()->UpdateLinePositions(editor_->GetCaptionAreaWidth(),
                                                   editor_->GetCaptionAreaHeight());
    }
}

// Brings the rows and the toolbar up to date after an edit.
void CaptionsPane::PostEditRefresh() {
    if (CaptionsItem* row = rows_->GetCurrentRow()) {
        row->RefreshFromCaption();
    }
    if (view_) {
        view_->RefreshToolbar();
    }
    Invalidate();
}

void CaptionsPane::RelayoutAfterRowCountChange() {
    UpdateVisibleRange();
    Invalidate();
    if (view_) {
        if (needsToolbarRelayout_) {
            view_->RelayoutBody();
            needsToolbarRelayout_ = false;
        }
        view_->RowCountChanged();
    }
}

void CaptionsPane::NotifyViewOfSelection() {
    if (view_) {
        view_->SelectionChanged(rows_->GetCurrentIndex());
    }
}

void CaptionsPane::NotifyViewOfStream() {
    if (view_) {
        view_->StreamChanged(stream_);
    }
}

} // namespace HandlerCaptions
