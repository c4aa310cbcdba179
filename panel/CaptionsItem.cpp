#include "CaptionsItem.h"

#include "CaptionEdit.h"
#include "CaptionsPane.h"
#include "ControlTextDiff.h"
#include "KSL/StationUtils.h"
#include "MZ/Captioning.h"
#include "MessageIds.h"
#include "RowFont.h"
#include "RowGeometry.h"
#include "zelcore/Localization.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>

#include <string>

namespace HandlerCaptions {

using zelmediatypes::TickTime;

namespace {

using row_geometry::kTimeControlWidthPx;
constexpr std::int32_t kTimeControlHeightPx = row_geometry::kLineHeightPx;
constexpr std::int32_t kRowInsetPx = row_geometry::kInsetPx;
constexpr std::int32_t kOutRowOffsetPx = row_geometry::kOutLineOffsetPx;
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
    RowControlPool::Destroy(controls_);
}

void CaptionsItem::BuildControls() {
    if (controls_) {
        return;
    }
    controls_ = pane_.GetControlPool().Take();
    for (UIF::HotTimecodeControl* control : {controls_.inTime.get(), controls_.outTime.get()}) {
        KSL::StationUtils::AddListener(control->GetStationID(), this);
        KSL::StationUtils::AddListener(control->GetTimecodeEditTextStationID(), this);
    }
    controls_.text->SetRow(this);
    controls_.text->SetValue(plainText_);
    shownText_ = controls_.text->GetValue();
    NameControls();
    // Borrowed controls may still show another row's times.
    ApplyTimeDisplay();
    ShowTimes();
}

void CaptionsItem::ReleaseControls() {
    if (!controls_) {
        return;
    }
    Hide();
    for (UIF::HotTimecodeControl* control : {controls_.inTime.get(), controls_.outTime.get()}) {
        KSL::StationUtils::RemoveListener(control->GetStationID(), this);
        KSL::StationUtils::RemoveListener(control->GetTimecodeEditTextStationID(), this);
    }
    controls_.text->SetRow(nullptr);
    pane_.GetControlPool().Give(std::move(controls_));
    controls_ = {};
}

void CaptionsItem::SetRowNumber(std::int32_t index) {
    if (index != rowNumber_) {
        rowNumber_ = index;
        NameControls();
    }
}

void CaptionsItem::NameControls() {
    const std::int32_t index = rowNumber_;
    if (!controls_ || index < 0) {
        return;
    }
    controls_.inTime->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/InTimeName=In time", index));
    controls_.outTime->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/OutTimeName=Out time", index));
    controls_.text->SetAccessibleName(
        RowControlName("$$$/Corvala/Handlers/CaptionView/TextName=Text", index));
}

void CaptionsItem::Layout(std::int32_t rowTopPx, std::int32_t timeLeftPx, std::int32_t rowRightPx) {
    BuildControls();
    const std::int32_t inTop = rowTopPx + kRowInsetPx;
    controls_.inTime->SetBounds(
        UIF::Rect::FromSize(timeLeftPx, inTop, kTimeControlWidthPx, kTimeControlHeightPx));
    controls_.outTime->SetBounds(UIF::Rect::FromSize(timeLeftPx, inTop + kOutRowOffsetPx,
                                                     kTimeControlWidthPx, kTimeControlHeightPx));
    const float textLeft = static_cast<float>(timeLeftPx + kTimeControlWidthPx + kTextGapPx);
    const float textRight = static_cast<float>(
        std::max(rowRightPx - 5, timeLeftPx + kTimeControlWidthPx + kTextGapPx + 20));
    controls_.text->SetBounds(zelui::controls::UI_Rect{
        textLeft, static_cast<float>(inTop), textRight,
        static_cast<float>(rowTopPx + CaptionsPane::kRowPitchPx - kTextBottomInsetPx)});
    controls_.inTime->Show();
    controls_.outTime->Show();
    controls_.text->SetVisible(true);
}

void CaptionsItem::Hide() {
    if (!controls_) {
        return;
    }
    controls_.inTime->Hide();
    controls_.outTime->Hide();
    controls_.text->SetVisible(false);
}

void CaptionsItem::SetSelectedLook(bool selected) {
    if (!controls_) {
        return;
    }
    const UIF::ColorID background =
        selected ? UIF::kColor_ReversibleGray : UIF::kColor_WindowBackground;
    controls_.inTime->SetBackgroundColorID(background);
    controls_.outTime->SetBackgroundColorID(background);
}

void CaptionsItem::RefreshFromCaption() {
    inTime_ = caption_->GetBeginTime();
    outTime_ = inTime_ + (caption_->GetEndTime() - inTime_);
    lastBeginTime_ = inTime_;
    plainText_ = MZ::Captioning::ConvertCaptionBlockToText(caption_);
    thumbnail_.composed.reset();
    if (!controls_) {
        return;
    }
    ShowTimes();
    const zelcore::UTF16String shown = controls_.text->GetValue();
    if (ToEngineBreaks(zelcore::View(shown)) != plainText_) {
        controls_.text->SetValue(plainText_);
    }
    shownText_ = controls_.text->GetValue();
}

void CaptionsItem::ApplyTimeDisplay() {
    if (!controls_) {
        return;
    }
    const UIF::TimecodeInfo info = pane_.GetRowTimecodeInfo();
    if (info.timeDisplay == zelmediatypes::kTimeDisplay_Unknown) {
        return;
    }
    const UIF::TimecodeInfo& shown = controls_.inTime->GetTimecodeInfo();
    if (shown.timeDisplay == info.timeDisplay && shown.frameDuration == info.frameDuration &&
        shown.alignToFrame == info.alignToFrame) {
        return;
    }
    for (UIF::HotTimecodeControl* control : {controls_.inTime.get(), controls_.outTime.get()}) {
        control->SetTimeDisplay(info.timeDisplay, info.frameDuration, info.alignToFrame);
    }
    ShowTimes();
}

void CaptionsItem::ShowTimes() {
    const UIF::TimecodeInfo& info = controls_.inTime->GetTimecodeInfo();
    const bool align = info.alignToFrame && info.frameDuration.GetTicks() > 0;
    controls_.inTime->SetTime(align ? inTime_.AlignToFrame(info.frameDuration) : inTime_);
    controls_.outTime->SetTime(align ? outTime_.AlignToFrame(info.frameDuration) : outTime_);
}

void CaptionsItem::RestoreTimes(TickTime inTime, TickTime outTime) {
    inTime_ = inTime;
    outTime_ = outTime;
    if (controls_) {
        ShowTimes();
    }
}

bool CaptionsItem::TextHasFocus() const {
    return controls_.text && controls_.text->HasFocus();
}

void CaptionsItem::StartTextEditing(std::int64_t start, std::int64_t end) {
    BuildControls();
    const zelcore::UTF16String value = controls_.text->GetValue();
    ToControlRange(zelcore::View(value), start, end);
    controls_.text->SetFocus();
    controls_.text->SetSelection(start, end);
}

void CaptionsItem::GetEngineSelection(std::int64_t& start, std::int64_t& end) const {
    if (!controls_.text) {
        start = 0;
        end = 0;
        return;
    }
    controls_.text->GetSelection(start, end);
    const zelcore::UTF16String value = controls_.text->GetValue();
    start = EnginePositionOf(zelcore::View(value), start);
    end = EnginePositionOf(zelcore::View(value), end);
}

void CaptionsItem::TextChanged() {
    const zelcore::UTF16String now = controls_.text->GetValue();
    const std::optional<ControlTextChange> change = DiffControlText(shownText_, now);
    shownText_ = now;
    if (change) {
        pane_.CommitRowText(caption_, change->removed, change->inserted, change->position);
    }
}

bool CaptionsItem::HandleMessage(const KSL::Message& message) {
    if (message.GetMessageID() == CachedMessageID<UIF::HotTimecodeChangedMessage>()) {
        const auto& changed = static_cast<const UIF::HotTimecodeChangedMessage&>(message);
        TimeEdited(changed.GetTime(), (changed.GetFlags() & RowControls::kOutTimeFlag) != 0);
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
