#include "zelui/controls/UI_TextButton.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"

#include <QPushButton>

namespace zelui::controls {

UI_TextButton::UI_TextButton(const zelcore::UTF16String& text)
    : UI_ControlView(std::make_unique<Impl>(new QPushButton())) {
    SetText(text);
    QObject::connect(platform::ui::ControlWidget<QPushButton>(*this), &QPushButton::clicked,
                     [this] { NotifyChanged(); });
}

void UI_TextButton::SetText(const zelcore::UTF16String& text) {
    if (auto* button = platform::ui::ControlWidget<QPushButton>(*this)) {
        button->setText(platform::ui::Localized(zelcore::View(text)));
    }
}

zelcore::UTF16String UI_TextButton::GetText() const {
    const auto* button = platform::ui::ControlWidget<QPushButton>(*this);
    return button ? platform::ui::ToUTF16(button->text()) : zelcore::UTF16String();
}

} // namespace zelui::controls
