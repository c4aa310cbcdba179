#include "UIF/HotTimecodeControl.h"
#include "UIF/TimeDisplayChoice.h"

#include "KSL/StationUtils.h"
#include "PlatformHost/HostAccess.h"
#include "controls/TimecodeWidget.h"
#include "controls/ViewChild.h"
#include "input/QtConversions.h"
#include "zelmediatypes/TimeLabel.h"

namespace UIF {
namespace {

using zelmediatypes::TickTime;
using zelmediatypes::TimeDisplay;

bool IsKnownDisplay(TimeDisplay display) {
    return zelmediatypes::VideoFrameRate(display).has_value() ||
           display == zelmediatypes::kTimeDisplay_Frames ||
           zelmediatypes::IsAudioTimeDisplay(display);
}

zelmediatypes::FrameRate MediaRate(TickTime frameDuration) {
    if (frameDuration.GetTicks() > 0) {
        if (auto rate = zelmediatypes::FrameRate::FromFramesPerSecond(
                zelmediatypes::kTicksPerSecond, frameDuration.GetTicks())) {
            return *rate;
        }
    }
    return zelmediatypes::kFrameRate_25;
}

} // namespace

struct HotTimecodeControl::Impl : platform::ui::TimecodeWidget::Owner {
    Impl(HotTimecodeControl& control, ViewBase& parent)
        : owner(control)
        , widget(parent, *this) {}

    QString Label() const override {
        return platform::ui::ToQString(zelcore::View(owner.Label(owner.time_)));
    }
    TickTime Time() const override { return owner.time_; }
    TickTime FrameDuration() const override { return owner.info_.frameDuration; }
    TimeDisplay Display() const override { return owner.info_.timeDisplay; }
    void Scrubbed(TickTime time, bool ended) override {
        owner.time_ = time;
        if (ended) {
            owner.CommitTime(time);
        }
    }
    void EditTextChanged(const QString& text) override {
        KSL::StationUtils::BroadcastMessage(
            owner.editTextStationID_,
            HotTimecodeEditTextMessage(platform::ui::ToUTF16(text), owner.reportFlags_));
    }
    void EditConfirmed(const QString& text) override {
        if (!IsKnownDisplay(owner.info_.timeDisplay)) {
            return;
        }
        const zelmediatypes::TimeLabelParse parse =
            zelmediatypes::ParseTimeLabel(text.trimmed().toStdString(), owner.info_.timeDisplay,
                                          MediaRate(owner.info_.frameDuration));
        if (!parse.time) {
            return;
        }
        EditTextChanged(text);
        owner.CommitTime(*parse.time);
    }
    void DisplayChosen(TimeDisplay display) override {
        owner.info_.timeDisplay = display;
        if (!owner.displayStation_.IsNull()) {
            AnnounceTimeDisplayChoice(owner.displayStation_, display);
        }
    }

    HotTimecodeControl& owner;
    platform::ui::ViewChild<platform::ui::TimecodeWidget> widget;
};

HotTimecodeControl::HotTimecodeControl()
    : stationID_(platform::ui::UniqueStationName("UIF.HotTimecodeControl"))
    , editTextStationID_(platform::ui::UniqueStationName("UIF.HotTimecodeControl.editText")) {}

HotTimecodeControl::~HotTimecodeControl() = default;

void HotTimecodeControl::Create(ViewBase& parent, const Rect& bounds, TickTime time,
                                const TimecodeInfo& info, std::uint32_t reportFlags) {
    time_ = time;
    info_ = info;
    reportFlags_ = reportFlags;
    impl_ = std::make_unique<Impl>(*this, parent);
    impl_->widget.SetBounds(bounds);
    impl_->widget->setFocusPolicy(Qt::StrongFocus);
}

bool HotTimecodeControl::IsCreated() const {
    return impl_ && impl_->widget;
}

zelcore::UTF16String HotTimecodeControl::Label(TickTime time) const {
    if (!IsKnownDisplay(info_.timeDisplay)) {
        return zelcore::UTF16String();
    }
    return zelcore::ToUTF16(
        zelmediatypes::FormatTimeLabel(time, info_.timeDisplay, MediaRate(info_.frameDuration)));
}

void HotTimecodeControl::CommitTime(TickTime time) {
    if (info_.alignToFrame && info_.frameDuration.GetTicks() > 0) {
        time = time.AlignToFrame(info_.frameDuration);
    }
    time_ = time;
    if (IsCreated()) {
        impl_->widget->update();
    }
    KSL::StationUtils::BroadcastMessage(stationID_, HotTimecodeChangedMessage(time, reportFlags_));
}

void HotTimecodeControl::SetTime(TickTime time) {
    time_ = time;
    if (IsCreated()) {
        impl_->widget->update();
    }
}

void HotTimecodeControl::SetTimeDisplay(TimeDisplay display, TickTime frameDuration,
                                        bool alignToFrame) {
    info_ = TimecodeInfo{display, frameDuration, alignToFrame};
    if (IsCreated()) {
        impl_->widget->update();
    }
}

void HotTimecodeControl::SetTimeDisplayStation(const KSL::StationID& station) {
    displayStation_ = station;
}

void HotTimecodeControl::SetWantsKeyboardFocusFromAdvance(bool wants) {
    if (IsCreated()) {
        impl_->widget->setFocusPolicy(wants ? Qt::StrongFocus : Qt::ClickFocus);
    }
}

zelcore::UTF16String HotTimecodeControl::GetInlineEditText() const {
    if (IsCreated() && impl_->widget->IsEditing()) {
        return platform::ui::ToUTF16(impl_->widget->EditText());
    }
    return Label(time_);
}

bool HotTimecodeControl::IsEditing() const {
    return IsCreated() && impl_->widget->IsEditing();
}

void HotTimecodeControl::SetBackgroundColorID(ColorID color) {
    if (IsCreated()) {
        impl_->widget->SetBackground(color);
    }
}

void HotTimecodeControl::SetAccessibleName(const zelcore::UTF16String& name) {
    if (IsCreated()) {
        impl_->widget->setAccessibleName(platform::ui::Localized(zelcore::View(name)));
    }
}

Rect HotTimecodeControl::GetBounds() const {
    return impl_ ? impl_->widget.Bounds() : Rect();
}

void HotTimecodeControl::SetBounds(const Rect& bounds) {
    if (impl_) {
        impl_->widget.SetBounds(bounds);
    }
}

bool HotTimecodeControl::IsVisible() const {
    return impl_ && impl_->widget.IsVisible();
}

void HotTimecodeControl::Show() {
    if (impl_) {
        impl_->widget.SetVisible(true);
    }
}

void HotTimecodeControl::Hide() {
    if (impl_) {
        impl_->widget.SetVisible(false);
    }
}

void HotTimecodeControl::Destroy() {
    impl_.reset();
}

} // namespace UIF

namespace platform::ui {

QWidget* WidgetOf(const UIF::HotTimecodeControl& control) {
    return control.GetImpl() ? control.GetImpl()->widget.Get() : nullptr;
}

} // namespace platform::ui
