#include "zelui/controls/UI_StaticText.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"

#include <QLabel>

namespace zelui::controls {

UI_StaticText::UI_StaticText(const zelcore::UTF16String& text)
    : UI_ControlView(std::make_unique<Impl>(new QLabel())) {
    SetText(text);
}

void UI_StaticText::SetText(const zelcore::UTF16String& text) {
    if (auto* label = platform::ui::ControlWidget<QLabel>(*this)) {
        label->setText(platform::ui::Localized(zelcore::View(text)));
    }
}

zelcore::UTF16String UI_StaticText::GetText() const {
    const auto* label = platform::ui::ControlWidget<QLabel>(*this);
    return label ? platform::ui::ToUTF16(label->text()) : zelcore::UTF16String();
}

void UI_StaticText::SetAlignment(ControlAlignment alignment) {
    if (auto* label = platform::ui::ControlWidget<QLabel>(*this)) {
        const Qt::Alignment horizontal = alignment == kControlAlignment_Right    ? Qt::AlignRight
                                         : alignment == kControlAlignment_Center ? Qt::AlignHCenter
                                                                                 : Qt::AlignLeft;
        label->setAlignment(horizontal | Qt::AlignVCenter);
    }
}

} // namespace zelui::controls
