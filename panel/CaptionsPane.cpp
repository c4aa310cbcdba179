#include "CaptionsPane.h"

#include "CaptionsView.h"
#include "HSL/TimecodeInfo.h"
#include "KSL/IStation.h"
#include "KSL/StationUtils.h"
#include "ML/FrameService.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MZ/Captioning.h"
#include "MZ/MasterClipActions.h"
#include "MZ/SequenceActions.h"
#include "MZ/Stations.h"
#include "TimeDisplayListener.h"
#include "UIF/TimeDisplayChoice.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelcore/threads/AsyncCallFromMainThread.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>

namespace HandlerCaptions {

namespace {

constexpr std::uint32_t kPollIntervalMs = 100;
constexpr std::uint32_t kDeferredWorkDelayMs = 250;

const char* const kPaneStations[] = {
    MZ::kStation_BinActivation,
    MZ::kStation_SequenceActivation,
    MZ::kStation_MasterClipActivation,
    MZ::kStation_TrackItemActivation,
    MZ::kStation_Info,
    MZ::kStation_CaptionSelection,
    ML::kStation_RenderFrameCompletion,
};

std::uint32_t NewTimerID() {
    zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get();
    return manager ? manager->GetUniqueTimerID() : 0;
}

bool ModalWindowOpen() {
    const zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get();
    return manager && manager->HasModalWindow();
}

} // namespace

CaptionsPane::CaptionsPane(CaptionsView* view)
    : UIF::SubView(view)
    , view_(view)
    , controlPool_(std::make_unique<RowControlPool>(*this))
    , rows_(std::make_unique<CaptionsItemList>())
    , pollTimerID_(NewTimerID())
    , deferredTimerID_(NewTimerID())
    , decal_(UIF::Bitmap::GetBitmap(UIF::kAudioLargeDecal))
    , sourceTimeListener_(
          std::make_unique<TimeDisplayListener>(UIF::kStation_SourceTimeDisplayChanged, this))
    , sequenceTimeListener_(
          std::make_unique<TimeDisplayListener>(UIF::kStation_SequenceTimeDisplayChanged, this))
    , editor_(std::make_unique<caption_editor::CaptionTextEditor>()) {}

CaptionsPane::~CaptionsPane() {
    RemoveTimer(pollTimerID_);
    RemoveTimer(deferredTimerID_);
    for (const auto& [requestID, row] : pendingFrameRequests_) {
        ML::FrameService::CancelRequest(requestID);
    }
    // The listener base leaves every station it is on; the rows and their
    // controls go before the view's widget does.
    ClearRows();
}

void CaptionsPane::AttachedToView() {
    for (const char* station : kPaneStations) {
        KSL::StationUtils::AddListener(station, this);
    }
    EnableDoubleBuffering(true, false);
    WantsDragAndDropEvents(true);
    SetTimer(pollTimerID_, kPollIntervalMs);
}

void CaptionsPane::PostToMainThread(std::function<void()> call) {
    std::weak_ptr<int> alive = lifetime_;
    zelcore::threads::AsyncCallFromMainThread(
        [alive, call = std::move(call)] {
            if (alive.lock()) {
                call();
            }
        },
        0);
}

std::int32_t CaptionsPane::GetContentHeight() const {
    return rows_->GetCount() * kRowPitchPx;
}

std::int32_t CaptionsPane::GetRememberedSelection(const BE::IMasterClip* clip) const {
    const auto found = rememberedSelections_.find(clip);
    return found == rememberedSelections_.end() ? -1 : found->second.index;
}

bool CaptionsPane::IsOpenCaptions() const {
    return zelcaptioning::IsOpenCaptions(source_.GetChosenFormat());
}

bool CaptionsPane::IsSettled() const {
    return !deferralActive_ && source_.GetMasterClip() &&
           source_.GetChosenFormat() != zelcaptioning::kStreamFormat_None;
}

void CaptionsPane::RestartDeferredTimer() {
    RemoveTimer(deferredTimerID_);
    deferralActive_ = true;
    SetTimer(deferredTimerID_, kDeferredWorkDelayMs);
}

// --- Clip and stream ---

void CaptionsPane::ClearRows() {
    for (const std::shared_ptr<CaptionsItem>& row : shownRows_) {
        row->ReleaseControls();
    }
    shownRows_.clear();
    rows_->Clear();
    firstVisible_ = -1;
    lastVisible_ = -2;
}

bool CaptionsPane::LoadClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    if (clip == source_.GetMasterClip() &&
        source_.GetSourceKind() == CaptionSource::kSourceKind_MasterClip) {
        return true;
    }
    if (isCommitting_) {
        pendingClip_ = clip;
        reloadPending_ = true;
        RestartDeferredTimer();
        return false;
    }
    CommitCaptionEdit(true, {});
    UnsubscribeFromClip();
    if (source_.GetMasterClip() && rows_->GetCurrentIndex() >= 0) {
        rememberedSelections_[source_.GetMasterClip().Get()] = {source_.GetMasterClip(),
                                                                rows_->GetCurrentIndex()};
    }
    source_.SetSource(CaptionSource::kSourceKind_MasterClip, {});
    source_.SetMasterClip(clip);
    source_.ResetFormats();
    if (!clip) {
        stream_ = {};
        ClearRows();
        filterText_.clear();
        RebuildRows();
        NotifyViewOfStream();
        return true;
    }
    ReadStartingTimeDisplays();
    ChooseStream();
    return true;
}

void CaptionsPane::ShowStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                              const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    if (!LoadClip(clip) || !stream || stream == stream_) {
        return;
    }
    CommitCaptionEdit(true, {});
    if (source_.ChooseFormat(stream->GetStreamFormat())) {
        ChooseStream();
    }
}

void CaptionsPane::ShowTrackItem(const MZ::CaptioningTrackItem& item) {
    if (isCommitting_ || !item.masterClip || !item.stream) {
        return;
    }
    CommitCaptionEdit(true, {});
    UnsubscribeFromClip();
    source_.SetSource(CaptionSource::kSourceKind_TrackItem, item.stream);
    source_.SetMasterClip(item.masterClip);
    source_.SetSequence(item.sequence);
    source_.ResetFormats();
    ReadStartingTimeDisplays();
    ChooseStream();
}

void CaptionsPane::ReadStartingTimeDisplays() {
    const KSL::InterfaceRef<BE::IMasterClip>& clip = source_.GetMasterClip();
    zelmediatypes::TimeDisplay video =
        UIF::GetChosenVideoTimeDisplay(UIF::kStation_SourceTimeDisplayChanged);
    if (video == zelmediatypes::kTimeDisplay_Unknown) {
        video = MZ::MasterClipActions::GetVideoTimeDisplayFormat(clip);
    }
    zelmediatypes::TimeDisplay audio =
        UIF::GetChosenAudioTimeDisplay(UIF::kStation_SourceTimeDisplayChanged);
    if (audio == zelmediatypes::kTimeDisplay_Unknown) {
        audio = MZ::MasterClipActions::GetAudioTimeDisplayFormat(clip);
    }
    source_.SetSourceVideoFormat(video);
    source_.SetSourceAudioFormat(audio);
    ReadSequenceFormats();
}

void CaptionsPane::ReadSequenceFormats() {
    const KSL::InterfaceRef<BE::ISequence>& sequence = source_.GetSequence();
    if (!sequence) {
        return;
    }
    bool changed = source_.SetSequenceVideoFormat(
        MZ::SequenceActions::GetVideoTimeDisplayFormat(sequence, true));
    changed |=
        source_.SetSequenceAudioFormat(MZ::SequenceActions::GetAudioTimeDisplayFormat(sequence));
    changed |= source_.SetSequenceFlag(!MZ::SequenceActions::GetFrameAlignment(sequence));
    if (changed) {
        RefreshVisibleRows();
    }
}

void CaptionsPane::SubscribeToClip() {
    clipStation_ = KSL::StationOf(source_.GetMasterClip());
    if (!clipStation_.IsNull()) {
        KSL::StationUtils::AddListener(clipStation_, this);
    }
    streamStation_ = KSL::StationOf(stream_);
    if (!streamStation_.IsNull()) {
        KSL::StationUtils::AddListener(streamStation_, this);
    }
}

void CaptionsPane::UnsubscribeFromClip() {
    for (KSL::StationID* station : {&clipStation_, &streamStation_}) {
        if (!station->IsNull()) {
            KSL::StationUtils::RemoveListener(*station, this);
            *station = KSL::StationID();
        }
    }
}

// Resolves the stream of the chosen format, follows its stations and lists it.
void CaptionsPane::ChooseStream() {
    UnsubscribeFromClip();
    stream_ = source_.ResolveStream();
    SubscribeToClip();
    ClearRows();
    scrollOffsetPx_ = 0;
    filterText_.clear();
    NotifyViewOfStream();
    RebuildRows();
    if (rows_->GetCurrentIndex() < 0 && !rows_->IsEmpty()) {
        const std::int32_t remembered = GetRememberedSelection(source_.GetMasterClip().Get());
        if (remembered >= 0) {
            SelectRow(remembered, kSelectNotify_Silent);
        }
    }
}

void CaptionsPane::RebuildRows() {
    if (changeNotificationDepth_ >= 1) {
        rebuildPending_ = true;
        RestartDeferredTimer();
        return;
    }
    const zelcaptioning::CaptionPtr selected = rows_->GetCurrentCaption();
    const std::int32_t selectedIndex = rows_->GetCurrentIndex();
    ClearRows();
    if (stream_) {
        MZ::Captioning captioning(stream_);
        const std::size_t count = captioning.GetNumberOfCaptionBlocks();
        const std::u16string_view filter = zelcore::View(filterText_);
        // The stream's captions are its blocks, in time order.
        for (std::size_t i = 0; i < count; ++i) {
            zelcaptioning::CaptionPtr caption = stream_->GetCaption(i);
            auto row = std::make_shared<CaptionsItem>(*this, std::move(caption));
            if (!filter.empty() &&
                zelcore::View(row->GetPlainText()).find(filter) == std::u16string_view::npos) {
                continue;
            }
            rows_->Insert(rows_->GetCount(), std::move(row));
        }
    }
    const std::int32_t maxOffset = std::max(0, GetContentHeight() - kRowPitchPx);
    scrollOffsetPx_ =
        std::min<std::uint32_t>(scrollOffsetPx_, static_cast<std::uint32_t>(maxOffset));
    scrollOffsetPx_ -= scrollOffsetPx_ % kRowPitchPx;
    UpdateVisibleRange();
    std::int32_t reselect = selected ? rows_->IndexOf(selected.get()) : -1;
    if (reselect < 0 && selectedIndex >= 0) {
        reselect = rows_->Clamp(selectedIndex);
    }
    if (reselect >= 0) {
        SelectRow(reselect, kSelectNotify_Silent);
    } else {
        GiveCaptionToEditor();
    }
    RelayoutAfterRowCountChange();
}

void CaptionsPane::SetFilterText(const zelcore::UTF16String& text) {
    if (text == filterText_) {
        return;
    }
    filterText_ = text;
    filterChanged_ = true;
    RebuildRows();
}

// --- Visible range, scrolling and selection ---

void CaptionsPane::UpdateVisibleRange() {
    const std::int32_t count = rows_->GetCount();
    std::int32_t lo = -1;
    std::int32_t hi = -2;
    if (count > 0) {
        const std::int32_t first = static_cast<std::int32_t>(scrollOffsetPx_ / kRowPitchPx);
        const std::int32_t visibleRows = (GetClientRect().Height() + kRowPitchPx - 1) / kRowPitchPx;
        lo = std::min(count - 1, first);
        hi = first - 1 + visibleRows >= 0 ? std::min(count - 1, first - 1 + visibleRows) : 0;
    }
    // Rows are found by identity, not index: an insertion or removal since the
    // last layout shifts indices, and a row that left the range must hide.
    std::vector<std::shared_ptr<CaptionsItem>> shown;
    for (std::int32_t i = std::max(0, lo); i <= hi; ++i) {
        shown.push_back(rows_->At(i));
    }
    for (const std::shared_ptr<CaptionsItem>& row : shownRows_) {
        if (std::find(shown.begin(), shown.end(), row) == shown.end()) {
            // A row being typed into keeps its field, so the edit goes on.
            if (row->TextHasFocus()) {
                row->Hide();
            } else {
                row->ReleaseControls();
            }
        }
    }
    const std::int32_t timeLeft = RowTimeLeftPx();
    for (std::int32_t i = std::max(0, lo); i <= hi; ++i) {
        CaptionsItem& row = *rows_->At(i);
        row.SetRowNumber(i);
        row.Layout(i * kRowPitchPx - static_cast<std::int32_t>(scrollOffsetPx_), timeLeft,
                   GetClientRect().right);
        row.SetSelectedLook(i == rows_->GetCurrentIndex());
    }
    shownRows_ = std::move(shown);
    firstVisible_ = lo;
    lastVisible_ = hi;
}

void CaptionsPane::SetScrollOffset(std::uint32_t offsetPx) {
    if (!IsSettled() && !rows_->IsEmpty()) {
        return;
    }
    scrollOffsetPx_ = offsetPx / kRowPitchPx * kRowPitchPx;
    UpdateVisibleRange();
    Invalidate();
}

std::int32_t CaptionsPane::SelectRow(std::int32_t index, SelectNotify notify) {
    const std::int32_t clamped = rows_->Clamp(index);
    const std::int32_t previous = rows_->GetCurrentIndex();
    if (clamped == previous) {
        return clamped;
    }
    CommitCaptionEdit(true, {});
    if (previous >= 0 && previous < rows_->GetCount()) {
        rows_->At(previous)->SetSelectedLook(false);
    }
    rows_->SetCurrentIndex(clamped);
    rows_->ResetCaretState();
    GiveCaptionToEditor();
    const zelcaptioning::CaptionPtr caption = rows_->GetCurrentCaption();
    if (clamped >= 0) {
        rows_->At(clamped)->SetSelectedLook(true);
    }
    NotifyViewOfSelection();
    Invalidate();
    if (notify != kSelectNotify_Silent && caption) {
        KSL::StationUtils::PostMessageToUIThread(
            MZ::kStation_CaptionSelection,
            std::make_shared<MZ::CaptionSelectedMessage>(source_.GetMasterClip(), caption), false);
    }
    AnnounceSelectedRow();
    return clamped;
}

void CaptionsPane::GiveCaptionToEditor() {
    const zelcaptioning::CaptionPtr caption = rows_->GetCurrentCaption();
    const zelcaptioning::StreamFormat format = source_.GetChosenFormat();
    if (zelcaptioning::IsOpenCaptions(format) && source_.GetMasterClip()) {
        const zelcore::geom::RectT<int> frame = source_.GetMasterClip()->GetSettings().frameRect;
        editor_->SetCaption(caption, 0, 0, frame.right - frame.left, frame.bottom - frame.top);
    } else {
        int rows = caption_editor::CaptionTextEditor::kDefaultRowCount;
        int columns = caption_editor::CaptionTextEditor::kDefaultColumnCount;
        zelcaptioning::GetCaptionRowsAndColumns(format, rows, columns, false);
        editor_->SetCaption(caption, columns, rows, 0, 0);
    }
    editor_->SetModified(false);
}

// --- Time display ---

void CaptionsPane::VideoTimeDisplayChanged(const KSL::StationID& station,
                                           zelmediatypes::TimeDisplay display) {
    const bool sequence = station == KSL::StationID(UIF::kStation_SequenceTimeDisplayChanged);
    const bool changed =
        sequence ? source_.SetSequenceVideoFormat(display) : source_.SetSourceVideoFormat(display);
    if (changed) {
        RefreshVisibleRows();
    }
}

void CaptionsPane::AudioTimeDisplayChanged(const KSL::StationID& station,
                                           zelmediatypes::TimeDisplay display) {
    const bool sequence = station == KSL::StationID(UIF::kStation_SequenceTimeDisplayChanged);
    const bool changed =
        sequence ? source_.SetSequenceAudioFormat(display) : source_.SetSourceAudioFormat(display);
    if (changed) {
        RefreshVisibleRows();
    }
}

UIF::TimecodeInfo CaptionsPane::GetRowTimecodeInfo() const {
    UIF::TimecodeInfo info;
    info.timeDisplay = source_.GetRowTimeDisplay();
    if (source_.GetMasterClip()) {
        const zelmediatypes::FrameRate rate = source_.GetMasterClip()->GetSettings().frameRate;
        if (info.timeDisplay != zelmediatypes::kTimeDisplay_Unknown) {
            info = HSL::GetTimecodeInfo(info.timeDisplay, rate, source_.GetRowFrameAlignment());
        } else {
            info.frameDuration = rate.FrameDuration();
        }
    }
    return info;
}

void CaptionsPane::RefreshVisibleRows() {
    for (std::int32_t i = std::max(0, firstVisible_); i <= lastVisible_ && i < rows_->GetCount();
         ++i) {
        rows_->At(i)->ApplyTimeDisplay();
    }
}

// --- Timers ---

void CaptionsPane::TimerFired(UIF::TimerID id) {
    if (ModalWindowOpen()) {
        return;
    }
    if (id == deferredTimerID_) {
        RemoveTimer(deferredTimerID_);
        if (rebuildPending_) {
            rebuildPending_ = false;
            RebuildRows();
        }
        if (reloadPending_) {
            reloadPending_ = false;
            const KSL::InterfaceRef<BE::IMasterClip> clip = pendingClip_;
            pendingClip_ = {};
            deferralActive_ = false;
            LoadClip(clip);
        }
        deferralActive_ = false;
        if (view_) {
            view_->RefreshToolbar();
        }
        return;
    }
    if (id != pollTimerID_ || deferralActive_) {
        return;
    }
    if (changeNotificationDepth_ == 0 && editor_->IsModified() && !rows_->CurrentRowHasFocus()) {
        CommitCaptionEdit(true, {});
    } else if (source_.NeedsFormatRefresh()) {
        StreamChanged();
    } else if (rows_->TakeCaretOrSelectionChange() && view_) {
        view_->RefreshToolbar();
    }
}

void CaptionsPane::BoundsChanged() {
    UpdateVisibleRange();
}

} // namespace HandlerCaptions
