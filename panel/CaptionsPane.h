#pragma once

#include "CaptionSource.h"
#include "CaptionsItemList.h"
#include "KSL/Listener.h"
#include "ML/FrameRequest.h"
#include "MZ/CaptionMessages.h"
#include "UIF/Bitmap.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/SubView.h"
#include "caption_editor/CaptionTextEditor.h"
#include "caption_editor/StyleSummary.h"
#include "zelcaptioning/CaptioningColor.h"
#include "zelcaptioning/ParagraphStyleAttributes.h"

#include <boost/shared_ptr.hpp>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace BE {
class CaptionsChangedMessage;
}

namespace HandlerCaptions {

class CaptionsView;
class TimeDisplayListener;

// The scrolling list of the Captions panel: one 75-pixel row per caption of
// the shown stream, in time order, with exactly one row selected or none. It
// follows the host (selected clip, caption and stream changes, time display
// changes) and turns every gesture into an undoable edit of the stream.
//
// While the pane's own commit runs, rebuilds and clip loads wait for a 250 ms
// timer rather than being dropped; a 100 ms poll commits text left pending.
class CaptionsPane : public UIF::SubView, public KSL::Listener {
public:
    static constexpr std::int32_t kRowPitchPx = 75;

    // How SelectRow announces the new selection.
    enum SelectNotify : std::int32_t {
        kSelectNotify_Silent = 0,
        kSelectNotify_Keyboard = 1,
        kSelectNotify_Mouse = 2,
    };

    explicit CaptionsPane(CaptionsView* view);
    ~CaptionsPane() override;

    // The view is going: the pane stops calling back into it.
    void DetachView() { view_ = nullptr; }

    // --- What is shown ---
    // Makes `clip` (possibly empty) the current clip; false when a commit is
    // running and the load waits for the deferred-work timer.
    bool LoadClip(const KSL::InterfaceRef<BE::IMasterClip>& clip);
    // Makes the clip current and shows the given one of its streams.
    void ShowStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                    const KSL::InterfaceRef<BE::ICaptioningStream>& stream);
    // Shows the stream of a caption track item, in its sequence's time display.
    void ShowTrackItem(const MZ::CaptioningTrackItem& item);
    void RebuildRows();
    void UpdateVisibleRange();
    // Returns the index actually selected (clamped to the rows).
    std::int32_t SelectRow(std::int32_t index, SelectNotify notify);
    // Scrolls to the whole row at or above `offsetPx`.
    void SetScrollOffset(std::uint32_t offsetPx);
    void SetFilterText(const zelcore::UTF16String& text);

    const KSL::InterfaceRef<BE::IMasterClip>& GetCurrentClip() const {
        return source_.GetMasterClip();
    }
    KSL::InterfaceRef<BE::ICaptioningStream> GetStream() const { return stream_; }
    const CaptionSource& GetCaptionSource() const { return source_; }
    CaptionsItemList& GetItemList() { return *rows_; }
    const CaptionsItemList& GetItemList() const { return *rows_; }
    caption_editor::CaptionTextEditor& GetEditor() { return *editor_; }
    RowControlPool& GetControlPool() { return *controlPool_; }
    std::uint32_t GetScrollOffset() const { return scrollOffsetPx_; }
    std::int32_t GetFirstVisibleIndex() const { return firstVisible_; }
    std::int32_t GetLastVisibleIndex() const { return lastVisible_; }
    std::int32_t GetContentHeight() const;
    const zelcore::UTF16String& GetFilterText() const { return filterText_; }
    bool IsDeferralActive() const { return deferralActive_; }
    // The row index remembered for a clip the pane left; -1 when none.
    std::int32_t GetRememberedSelection(const BE::IMasterClip* clip) const;
    bool IsTextEditActive() const { return isTextEditActive_; }
    const zelcore::UTF16String& GetPendingActionName() const { return pendingActionName_; }
    std::int32_t GetChangeNotificationDepth() const { return changeNotificationDepth_; }

    // --- Time display ---
    void VideoTimeDisplayChanged(const KSL::StationID& station, zelmediatypes::TimeDisplay display);
    void AudioTimeDisplayChanged(const KSL::StationID& station, zelmediatypes::TimeDisplay display);
    // How rows show their times now; its display is kTimeDisplay_Unknown
    // until the source's format is known.
    UIF::TimecodeInfo GetRowTimecodeInfo() const;

    // --- Edits ---
    void CommitCaptionEdit(bool undoableNow, const zelcore::UTF16String& actionName);
    void FlushPendingEdit() { CommitCaptionEdit(true, {}); }
    void CommitEdits() { FlushPendingEdit(); }
    void CommitRowText(const zelcaptioning::CaptionPtr& caption,
                       const zelcore::UTF16String& oldText, const zelcore::UTF16String& newText,
                       std::uint64_t position);
    void AddCaptionAfterCurrent();
    void DeleteCurrentCaption();
    bool MoveCaption(const zelcaptioning::CaptionPtr& caption, zelmediatypes::TickTime newBegin,
                     zelmediatypes::TickTime duration);
    void ApplyCaptionTimes(const zelcaptioning::CaptionPtr& caption,
                           zelmediatypes::TickTime newBegin, zelmediatypes::TickTime duration);

    // Style and layout actions on the current selection range of the current row.
    void SetBold(bool bold);
    void SetItalic(bool italic);
    void SetUnderline(bool underline);
    void SetFontFamily(const zelcore::UTF16String& family);
    void SetFontSize(float size);
    void SetColor(const zelcaptioning::CaptioningColor& color, std::int32_t target);
    void SetEdgeWidth(float width);
    void SetAlignment(zelcaptioning::TextAlignmentType alignment);
    void SetGridPosition(std::uint32_t column, std::uint32_t row);
    void MoveParagraph(std::int32_t deltaColumns, std::int32_t deltaRows);
    void MoveOpenParagraph(double x, double y);
    void SetCaptionType(zelcaptioning::CaptionType type);

    // The current row's text control when it has the keyboard focus; else null.
    CaptionEdit* GetFocusedTextControl() const;
    // What the styles of the selected text (the whole caption when the row is
    // not being edited) have in common.
    caption_editor::StyleSummary GetSelectionStyle();
    // Inserts the music note at the caret of the current caption, as typed text.
    void InsertMusicNote();
    // Gives the focus and selection back to the caption being edited.
    void ResumeTextEditing();

    // --- Text editing keys (posted by the rows' text controls) ---
    void MoveEditingRow(std::int32_t delta);
    void LeaveTextEditing();

    // The row's text control took the focus.
    void RowTextFocused(const CaptionsItem& row);

    // Runs the call on the UI thread after the current event returns, unless
    // the pane is gone by then.
    void PostToMainThread(std::function<void()> call);

protected:
    void AttachedToView() override;
    void Draw(UIF::DC& dc, const UIF::Rect& updateArea) override;
    bool MouseDown(const zelui::ui::UI_MouseEvent& event) override;
    bool KeyDown(std::int32_t keyCode, std::uint32_t modifiers) override;
    bool MouseWheel(const zelui::ui::UI_MouseEvent& event) override;
    void TimerFired(UIF::TimerID id) override;
    void BoundsChanged() override;
    bool HandleMessage(const KSL::Message& message) override;

private:
    // Hands the current caption (or none) to the editing engine.
    void GiveCaptionToEditor();
    // Hides the shown rows and drops every row.
    void ClearRows();
    void RestartDeferredTimer();
    void SubscribeToClip();
    void UnsubscribeFromClip();
    void ChooseStream();
    void ReadStartingTimeDisplays();
    void ReadSequenceFormats();
    void RefreshVisibleRows();
    void RelayoutAfterRowCountChange();
    void PostEditRefresh();
    void RefreshCaptionLayout();
    void NotifyViewOfSelection();
    void NotifyViewOfStream();
    bool IsOpenCaptions() const;
    // Where a row's time controls start: right of the thumbnail and the labels.
    std::int32_t RowTimeLeftPx() const;
    UIF::Rect ThumbnailBox(std::int32_t rowTopPx) const;
    void RequestThumbnail(CaptionsItem& row, const UIF::Rect& box);
    // Tells assistive technology which row is selected now.
    void AnnounceSelectedRow();
    bool IsSettled() const;
    // Runs a style action: the engine operation, the commit under its name,
    // and the row's text editing resumed when an edit was in progress.
    // The selection range of the current row, read from its text when focused.
    void ReadSelectionRange(std::int64_t& start, std::int64_t& end);
    template <typename Operation>
    void RunStyleAction(const char16_t* actionName, bool needsCaption, bool resumeEditing,
                        bool refreshLayout, Operation operation);

    void CaptionsChanged(const BE::CaptionsChangedMessage& message);
    void ClipSelected(const KSL::InterfaceRef<BE::IMasterClip>& clip);
    void FrameRendered(ML::RequestID requestID, const VF::VideoFrameRef& frame, bool isFinal);
    void StreamChanged();

    CaptionsView* view_;
    // Before the rows: they give their controls back to it.
    std::unique_ptr<RowControlPool> controlPool_;
    std::unique_ptr<CaptionsItemList> rows_;
    std::map<ML::RequestID, std::weak_ptr<CaptionsItem>> pendingFrameRequests_;
    std::uint32_t scrollOffsetPx_ = 0;
    CaptionSource source_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    KSL::StationID clipStation_;
    KSL::StationID streamStation_;
    std::uint32_t pollTimerID_ = 0;
    std::uint32_t deferredTimerID_ = 0;
    bool deferralActive_ = false;
    bool rebuildPending_ = false;
    bool reloadPending_ = false;
    KSL::InterfaceRef<BE::IMasterClip> pendingClip_;
    UIF::Bitmap decal_;
    // The wider of the In and Out labels, as last measured by Draw.
    std::int32_t labelColumnPx_ = 28;
    // The rows whose controls the last layout showed.
    std::vector<std::shared_ptr<CaptionsItem>> shownRows_;
    std::int32_t firstVisible_ = -1;
    std::int32_t lastVisible_ = -2;
    std::unique_ptr<TimeDisplayListener> sourceTimeListener_;
    std::unique_ptr<TimeDisplayListener> sequenceTimeListener_;
    zelcore::UTF16String filterText_;
    struct RememberedSelection {
        KSL::InterfaceRef<BE::IMasterClip> clip;
        std::int32_t index = -1;
    };
    std::map<const BE::IMasterClip*, RememberedSelection> rememberedSelections_;
    bool isCommitting_ = false;
    zelcore::UTF16String pendingActionName_;
    bool filterChanged_ = true;
    std::int32_t changeNotificationDepth_ = 0;
    bool isTextEditActive_ = false;
    bool needsToolbarRelayout_ = false;
    std::unique_ptr<caption_editor::CaptionTextEditor> editor_;
    // Posted calls hold a weak reference and run only while the pane lives.
    std::shared_ptr<int> lifetime_ = std::make_shared<int>(0);
};

} // namespace HandlerCaptions
