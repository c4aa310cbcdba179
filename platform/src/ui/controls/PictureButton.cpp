#include "UIF/PictureButton.h"

#include "PlatformHost/HostAccess.h"
#include "UIF/CommandRouting.h"
#include "UIF/ViewBase.h"
#include "controls/ViewChild.h"
#include "drawing/BitmapImpl.h"
#include "toolkit/DelayedToolTip.h"

#include <QToolButton>

namespace UIF {

struct PictureButton::Impl {
    explicit Impl(ViewBase& parent)
        : button(parent)
        , toolTip(*button.Get()) {}
    platform::ui::ViewChild<QToolButton> button;
    platform::ui::DelayedToolTip toolTip;
    bool pressed = false;
};

PictureButton::PictureButton(ViewBase& parent)
    : parent_(&parent)
    , impl_(std::make_unique<Impl>(parent)) {
    QToolButton* button = impl_->button.Get();
    button->setAutoRaise(true);
    // Reached with Tab; a click leaves the focus where it is, so a text edit
    // in progress stays open.
    button->setFocusPolicy(Qt::TabFocus);
    button->setIconSize(QSize(16, 16));
    QObject::connect(button, &QToolButton::clicked, [this] { Clicked(); });
}

PictureButton::~PictureButton() = default;

void PictureButton::Clicked() {
    // The look of a toggle follows the owner's state, not the click.
    if (impl_->button) {
        impl_->button->setChecked(impl_->pressed);
    }
    if (command_ != 0) {
        SendCommand(command_, parent_);
    }
}

void PictureButton::SetDecal(DecalID decal) {
    const Bitmap bitmap = Bitmap::GetBitmap(decal);
    if (impl_->button && !bitmap.IsNull()) {
        impl_->button->setIcon(QIcon(QPixmap::fromImage(bitmap.GetImpl()->image)));
    }
}

void PictureButton::SetCommandID(CommandID command) {
    command_ = command;
}

void PictureButton::SetToolTip(const zelcore::UTF16String& text, std::uint32_t delayMilliseconds) {
    impl_->toolTip.SetText(platform::ui::Localized(zelcore::View(text)),
                           static_cast<int>(delayMilliseconds));
    // The tip names the button for assistive technology too.
    if (QToolButton* button = impl_->button.Get()) {
        button->setAccessibleName(platform::ui::Localized(zelcore::View(text)));
    }
}

void PictureButton::SetPressed(bool pressed) {
    impl_->pressed = pressed;
    if (impl_->button) {
        // A button given a pressed state is a toggle to assistive technology,
        // which then reads its checked state; the others stay push buttons.
        impl_->button->setCheckable(true);
        impl_->button->setChecked(pressed);
    }
}

bool PictureButton::IsPressed() const {
    return impl_->pressed;
}

void PictureButton::SetEnabled(bool enabled) {
    if (impl_->button) {
        impl_->button->setEnabled(enabled);
    }
}

bool PictureButton::IsEnabled() const {
    return impl_->button && impl_->button->isEnabled();
}

Rect PictureButton::GetBounds() const {
    return impl_->button.Bounds();
}

void PictureButton::SetBounds(const Rect& bounds) {
    impl_->button.SetBounds(bounds);
}

bool PictureButton::IsVisible() const {
    return impl_->button.IsVisible();
}

void PictureButton::Show() {
    impl_->button.SetVisible(true);
}

void PictureButton::Hide() {
    impl_->button.SetVisible(false);
}

void PictureButton::Destroy() {
    impl_->button.Destroy();
}

} // namespace UIF

namespace platform::ui {

QWidget* WidgetOf(const UIF::PictureButton& control) {
    return control.GetImpl() ? control.GetImpl()->button.Get() : nullptr;
}

} // namespace platform::ui
