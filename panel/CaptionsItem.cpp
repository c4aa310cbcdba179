#include "CaptionsItem.h"

#include "CaptionEdit.h"
#include "CaptionsPane.h"
#include "ControlTextDiff.h"
#include "KSL/StationUtils.h"
#include "MZ/Captioning.h"
#include "MessageIds.h"
#include "RowFont.h"
#include "zelcore/Localization.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>

#include <string>

namespace HandlerCaptions {

using zelmediatypes::TickTime;

namespace {

constexpr std::uint32_t kRowColour = 0x7f7f7f;
constexpr std::int32_t kTimeControlWidthPx = 85;
constexpr std::int32_t kTimeControlHeightPx = 17;
constexpr std::int32_t kRowInsetPx = 6;
constexpr std::int32_t kOutRowOffsetPx = 53;
constexpr std::int32_t kTextGapPx = 10;
constexpr std::int32_t kTextBottomInsetPx = 6;

zelcore::UTF16String RowControlName(const char* keyAndDefault, std::int32_t rowNumber) {
    zelcore::UTF16String name = zelcore::Localize(keyAndDefault);
    name += zelcore::ToUTF16(", caption " + std::to_string(rowNumber + 1));
    return name;
}

} // namespace

CaptionsItem::CaptionsItem(CaptionsPane& pane, zelcaptioning::CaptionPtr caption)
    : pane_(pane)
    , caption_(std::move(caption)) {
    inTime_ = caption_->GetBeginTime();
    outTime_ = inTime_ + (caption_->GetEndTime() - inTime_);
    lastBeginTime_ = inTime_;
    plainText_ = MZ::Captioning::ConvertCaptionBlockToText(caption_);
}

CaptionsItem::~CaptionsItem() {
    if (textControl_) {
        if (zelui::ui::UI_NodeManager* manager = zelui::ui::UI_NodeManager::Get()) {
            manager->RemoveKeyboardEventFilterNode(textControl_.get());
        }
        textControl_->SetVisible(false);
    }
    if (inControl_) {
        inControl_->Destroy();
    }
    if (outControl_) {
        outControl_->Destroy();
    }
}

void CaptionsItem::BuildControls() {
    if (controlsBuilt_) {
        return;
    }
    controlsBuilt_ = true;
    rowColour_ = kRowColour;
    const UIF::TimecodeInfo info = pane_.GetRowTimecodeInfo();
    inControl_ = std::make_unique<UIF::HotTimecodeControl>();
    outControl_ = std::make_unique<UIF::HotTimecodeControl>();
    const UIF::Rect hidden{0, 0, kTimeControlWidthPx, kTimeControlHeightPx};
    inControl_->Create(pane_, hidden, inTime_, info, 0);
    outControl_->Create(pane_, hidden, outTime_, info, kOutTimeFlag);
    for (UIF::HotTimecodeControl* control : {inControl_.get(), outControl_.get()}) {
        control->SetWantsKeyboardFocusFromAdvance(false);
        control->Hide();
        KSL::StationUtils::AddListener(control->GetStationID(), this);
        KSL::StationUtils::AddListener(control->GetTimecodeEditTextStationID(), this);
    }
    textControl_.reset(new CaptionEdit(pane_, *this));
    ApplyRowFont(*textControl_);
    shownText_ = plainText_;
    textControl_->SetValue(plainText_);
    shownText_ = textControl_->GetValue();
    textControl_->NotifyWhenChanged([this](const auto&) { TextChanged(); });
    textControl_->SetVisible(false);
    pane_.AddControl(*textControl_);
    textControl_->SetDisabled(false);
    SetRowNumber(rowNumber_);
    ApplyTimeDisplay();
}

void CaptionsItem::SetRowNumber(std::int32_t index) {
    rowNumber_ = index;
    if (!controlsBuilt_ || index < 0) {
        return;
    }
    inControl_->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/InTimeName=In time", index));
    outControl_->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/OutTimeName=Out time", index));
    textControl_->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/TextName=Text", index));
}

void CaptionsItem::Layout(std::int32_t rowTopPx, std::int32_t timeLeftPx, std::int32_t rowRightPx) {
    BuildControls();
    const std::int32_t inTop = rowTopPx + kRowInsetPx;
    inControl_->SetBounds(
        UIF::Rect::FromSize(timeLeftPx, inTop, kTimeControlWidthPx, kTimeControlHeightPx));
    outControl_->SetBounds(UIF::Rect::FromSize(timeLeftPx, inTop + kOutRowOffsetPx,
                                               kTimeControlWidthPx, kTimeControlHeightPx));
    const float textLeft = static_cast<float>(timeLeftPx + kTimeControlWidthPx + kTextGapPx);
    const float textRight = static_cast<float>(
        std::max(rowRightPx - 5, timeLeftPx + kTimeControlWidthPx + kTextGapPx + 20));
    textControl_->SetBounds(zelui::controls::UI_Rect{
        textLeft, static_cast<float>(inTop), textRight,
        static_cast<float>(rowTopPx + CaptionsPane::kRowPitchPx - kTextBottomInsetPx)});
    inControl_->Show();
    outControl_->Show();
    textControl_->SetVisible(true);
}

void CaptionsItem::Hide() {
    if (!controlsBuilt_) {
        return;
    }
    inControl_->Hide();
    outControl_->Hide();
    textControl_->SetVisible(false);
}

void CaptionsItem::SetSelectedLook(bool selected) {
    if (!controlsBuilt_) {
        return;
    }
    const UIF::ColorID background =
        selected ? UIF::kColor_ReversibleGray : UIF::kColor_WindowBackground;
    inControl_->SetBackgroundColorID(background);
    outControl_->SetBackgroundColorID(background);
}

void CaptionsItem::RefreshFromCaption() {
    inTime_ = caption_->GetBeginTime();
    outTime_ = inTime_ + (caption_->GetEndTime() - inTime_);
    lastBeginTime_ = inTime_;
    plainText_ = MZ::Captioning::ConvertCaptionBlockToText(caption_);
    thumbnail_.composed.reset();
    if (!controlsBuilt_) {
        return;
    }
    ShowTimes();
    const zelcore::UTF16String shown = textControl_->GetValue();
    if (ToEngineBreaks(zelcore::View(shown)) != plainText_) {
        textControl_->SetValue(plainText_);
    }
    shownText_ = textControl_->GetValue();
}

void CaptionsItem::ApplyTimeDisplay() {
    if (!controlsBuilt_) {
        return;
    }
    const UIF::TimecodeInfo info = pane_.GetRowTimecodeInfo();
    if (info.timeDisplay == zelmediatypes::kTimeDisplay_Unknown) {
        return;
    }
    for (UIF::HotTimecodeControl* control : {inControl_.get(), outControl_.get()}) {
        control->SetTimeDisplay(info.timeDisplay, info.frameDuration, info.alignToFrame);
    }
    ShowTimes();
}

void CaptionsItem::ShowTimes() {
    const UIF::TimecodeInfo& info = inControl_->GetTimecodeInfo();
    const bool align = info.alignToFrame && info.frameDuration.GetTicks() > 0;
    inControl_->SetTime(align ? inTime_.AlignToFrame(info.frameDuration) : inTime_);
    outControl_->SetTime(align ? outTime_.AlignToFrame(info.frameDuration) : outTime_);
}

void CaptionsItem::RestoreTimes(TickTime inTime, TickTime outTime) {
    inTime_ = inTime;
    outTime_ = outTime;
    if (controlsBuilt_) {
        ShowTimes();
    }
}

bool CaptionsItem::TextHasFocus() const {
    return textControl_ && textControl_->HasFocus();
}

void CaptionsItem::StartTextEditing(std::int64_t start, std::int64_t end) {
    BuildControls();
    const zelcore::UTF16String value = textControl_->GetValue();
    ToControlRange(zelcore::View(value), start, end);
    textControl_->SetFocus();
    textControl_->SetSelection(start, end);
}

void CaptionsItem::GetEngineSelection(std::int64_t& start, std::int64_t& end) const {
    if (!textControl_) {
        start = 0;
        end = 0;
        return;
    }
    textControl_->GetSelection(start, end);
    const zelcore::UTF16String value = textControl_->GetValue();
    start = EnginePositionOf(zelcore::View(value), start);
    end = EnginePositionOf(zelcore::View(value), end);
}

void CaptionsItem::TextChanged() {
    const zelcore::UTF16String now = textControl_->GetValue();
    const std::optional<ControlTextChange> change = DiffControlText(shownText_, now);
    shownText_ = now;
    if (change) {
        pane_.CommitRowText(caption_, change->removed, change->inserted, change->position);
    }
}

bool CaptionsItem::HandleMessage(const KSL::Message& message) {
    if (message.GetMessageID() == CachedMessageID<UIF::HotTimecodeChangedMessage>()) {
        const auto& changed = static_cast<const UIF::HotTimecodeChangedMessage&>(message);
        TimeEdited(changed.GetTime(), (changed.GetFlags() & kOutTimeFlag) != 0);
        return true;
    }
    return message.GetMessageID() == CachedMessageID<UIF::HotTimecodeEditTextMessage>();
}

void CaptionsItem::TimeEdited(TickTime value, bool isOut) {
    if (reentryGuard_) {
        return;
    }
    const TickTime oldIn = inTime_;
    const TickTime oldOut = outTime_;
    const TickTime frame = pane_.GetRowTimecodeInfo().frameDuration;
    if (isOut) {
        if (value == outTime_) {
            return;
        }
        outTime_ = std::max(value, frame);
        if (inTime_ >= outTime_) {
            inTime_ = outTime_ - frame;
        }
    } else {
        if (value == inTime_) {
            return;
        }
        inTime_ = value;
        if (inTime_ >= outTime_) {
            outTime_ = inTime_ + frame;
        }
    }
    if (!pane_.MoveCaption(caption_, inTime_, outTime_ - inTime_)) {
        reentryGuard_ = true;
        pane_.PostToMainThread([row = weak_from_this(), oldIn, oldOut] {
            if (const std::shared_ptr<CaptionsItem> alive = row.lock()) {
                alive->RestoreTimes(oldIn, oldOut);
                alive->reentryGuard_ = false;
            }
        });
    }
}

} // namespace HandlerCaptions
