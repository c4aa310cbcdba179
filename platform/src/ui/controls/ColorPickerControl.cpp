#include "UIF/ColorPickerControl.h"

#include "KSL/StationUtils.h"
#include "PlatformHost/HostAccess.h"
#include "controls/ColorRowWidget.h"
#include "controls/ViewChild.h"
#include "input/QtConversions.h"

namespace UIF {

struct ColorPickerControl::Impl {
    Impl(ViewBase& parent, platform::ui::ColorRowWidget::Callbacks callbacks)
        : row(parent, std::move(callbacks)) {}
    platform::ui::ViewChild<platform::ui::ColorRowWidget> row;
};

ColorPickerControl::ColorPickerControl(ViewBase& parent)
    : stationID_(platform::ui::UniqueStationName("UIF.ColorPickerControl")) {
    auto broadcastColor = [this](const QColor& color) {
        KSL::StationUtils::BroadcastMessage(
            stationID_, ColorPickerControlChangedMessage(platform::ui::ToUIColor(color)));
    };
    platform::ui::ColorRowWidget::Callbacks callbacks;
    callbacks.presetChosen = broadcastColor;
    callbacks.swatchClicked = [this] {
        KSL::StationUtils::BroadcastMessage(stationID_, ColorPickerSwatchClickedMessage());
    };
    callbacks.eyedropperStarted = [this] {
        KSL::StationUtils::BroadcastMessage(stationID_,
                                            ColorPickerSwatchStartEyedropperModeMessage());
    };
    // Sampling only shows the colour; the choice is the one under the release.
    callbacks.eyedropperEnded = [this, broadcastColor](const QColor& color) {
        broadcastColor(color);
        KSL::StationUtils::BroadcastMessage(stationID_,
                                            ColorPickerSwatchEndEyedropperModeMessage());
    };
    impl_ = std::make_unique<Impl>(parent, std::move(callbacks));
}

ColorPickerControl::~ColorPickerControl() = default;

zelui::ui::UI_Color ColorPickerControl::GetColor() const {
    return impl_->row ? platform::ui::ToUIColor(impl_->row->Color()) : zelui::ui::UI_Color();
}

void ColorPickerControl::SetColor(const zelui::ui::UI_Color& color) {
    if (impl_->row) {
        impl_->row->SetColor(platform::ui::ToQColor(color));
    }
}

void ColorPickerControl::SetAccessibleName(const zelcore::UTF16String& name) {
    if (impl_->row) {
        impl_->row->setAccessibleName(platform::ui::Localized(zelcore::View(name)));
    }
}

void ColorPickerControl::SetEnabled(bool enabled) {
    if (impl_->row) {
        impl_->row->setEnabled(enabled);
    }
}

bool ColorPickerControl::IsEnabled() const {
    return impl_->row && impl_->row->isEnabled();
}

Rect ColorPickerControl::GetBounds() const {
    return impl_->row.Bounds();
}

void ColorPickerControl::SetBounds(const Rect& bounds) {
    impl_->row.SetBounds(bounds);
}

bool ColorPickerControl::IsVisible() const {
    return impl_->row.IsVisible();
}

void ColorPickerControl::Show() {
    impl_->row.SetVisible(true);
}

void ColorPickerControl::Hide() {
    impl_->row.SetVisible(false);
}

void ColorPickerControl::Destroy() {
    impl_->row.Destroy();
}

} // namespace UIF

namespace platform::ui {

QWidget* WidgetOf(const UIF::ColorPickerControl& control) {
    return control.GetImpl() ? control.GetImpl()->row.Get() : nullptr;
}

} // namespace platform::ui
