#include "UIF/ScrollBar.h"

#include "KSL/StationUtils.h"
#include "PlatformHost/HostAccess.h"
#include "controls/ViewChild.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace UIF {

struct ScrollBar::Impl {
    explicit Impl(ViewBase& parent)
        : bar(parent, Qt::Vertical) {}
    platform::ui::ViewChild<QScrollBar> bar;
    // Set while the owner changes the bar, whose moves are not the user's.
    bool settingFromCode = false;
};

ScrollBar::ScrollBar(ViewBase& parent)
    : stationID_(platform::ui::UniqueStationName("UIF.ScrollBar"))
    , impl_(std::make_unique<Impl>(parent)) {
    QObject::connect(impl_->bar.Get(), &QScrollBar::valueChanged, [this](int position) {
        if (impl_->settingFromCode) {
            return;
        }
        if (GetOrientation() == kScrollBar_Vertical) {
            KSL::StationUtils::BroadcastMessage(stationID_, ScrollVerticalMessage(position));
        } else {
            KSL::StationUtils::BroadcastMessage(stationID_, ScrollHorizontalMessage(position));
        }
    });
}

ScrollBar::~ScrollBar() = default;

std::int32_t ScrollBar::GetDefaultSize() {
    return QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent);
}

void ScrollBar::SetOrientation(ScrollBarOrientation orientation) {
    if (impl_->bar) {
        impl_->bar->setOrientation(orientation == kScrollBar_Horizontal ? Qt::Horizontal
                                                                        : Qt::Vertical);
    }
}

ScrollBarOrientation ScrollBar::GetOrientation() const {
    return impl_->bar && impl_->bar->orientation() == Qt::Horizontal ? kScrollBar_Horizontal
                                                                     : kScrollBar_Vertical;
}

void ScrollBar::ApplyRange() {
    if (!impl_->bar) {
        return;
    }
    impl_->settingFromCode = true;
    impl_->bar->setRange(minimum_, std::max(minimum_, maximum_ - pageSize_));
    impl_->bar->setPageStep(std::max(pageSize_, 1));
    impl_->bar->setSingleStep(std::max(stepSize_, 1));
    impl_->settingFromCode = false;
}

void ScrollBar::SetMinimum(std::int32_t minimum) {
    minimum_ = minimum;
    ApplyRange();
}

void ScrollBar::SetMaximum(std::int32_t maximum) {
    maximum_ = maximum;
    ApplyRange();
}

void ScrollBar::SetPageSize(std::int32_t pageSize) {
    pageSize_ = std::max(pageSize, 0);
    ApplyRange();
}

void ScrollBar::SetStepSize(std::int32_t stepSize) {
    stepSize_ = std::max(stepSize, 1);
    ApplyRange();
}

void ScrollBar::SetPosition(std::int32_t position) {
    if (impl_->bar) {
        impl_->settingFromCode = true;
        impl_->bar->setValue(position);
        impl_->settingFromCode = false;
    }
}

std::int32_t ScrollBar::GetPosition() const {
    return impl_->bar ? impl_->bar->value() : minimum_;
}

Rect ScrollBar::GetBounds() const {
    return impl_->bar.Bounds();
}

void ScrollBar::SetBounds(const Rect& bounds) {
    impl_->bar.SetBounds(bounds);
}

bool ScrollBar::IsVisible() const {
    return impl_->bar.IsVisible();
}

void ScrollBar::Show() {
    impl_->bar.SetVisible(true);
}

void ScrollBar::Hide() {
    impl_->bar.SetVisible(false);
}

void ScrollBar::Destroy() {
    impl_->bar.Destroy();
}

} // namespace UIF

namespace platform::ui {

QWidget* WidgetOf(const UIF::ScrollBar& control) {
    return control.GetImpl() ? control.GetImpl()->bar.Get() : nullptr;
}

} // namespace platform::ui
