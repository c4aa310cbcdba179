#include "zelui/controls/UI_SearchBox.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"

#include <QLineEdit>

namespace zelui::controls {

UI_SearchBox::UI_SearchBox()
    : UI_InteractiveControlView(std::make_unique<Impl>(new QLineEdit())) {
    auto* edit = platform::ui::ControlWidget<QLineEdit>(*this);
    edit->setClearButtonEnabled(true);
    edit->setPlaceholderText(platform::ui::Localized(u"$$$/Corvala/Controls/Search=Search"));
    QObject::connect(edit, &QLineEdit::textEdited, [this](const QString& text) {
        if (text.isEmpty()) {
            NotifyChangedInteractively(kInteractiveChange_Final);
            NotifyChanged();
        } else {
            NotifyChangedInteractively(kInteractiveChange_Intermediate);
        }
    });
    QObject::connect(edit, &QLineEdit::returnPressed, [this] {
        NotifyChangedInteractively(kInteractiveChange_Final);
        NotifyChanged();
    });
}

zelcore::UTF16String UI_SearchBox::GetText() const {
    const auto* edit = platform::ui::ControlWidget<QLineEdit>(*this);
    return edit ? platform::ui::ToUTF16(edit->text()) : zelcore::UTF16String();
}

void UI_SearchBox::SetText(const zelcore::UTF16String& text) {
    if (auto* edit = platform::ui::ControlWidget<QLineEdit>(*this)) {
        edit->setText(platform::ui::ToQString(zelcore::View(text)));
    }
}

bool UI_SearchBox::HandleControlRequest(ControlRequest request) {
    if (!UI_InteractiveControlView::HandleControlRequest(request)) {
        return false;
    }
    if (auto* edit = platform::ui::ControlWidget<QLineEdit>(*this)) {
        edit->selectAll();
    }
    return true;
}

} // namespace zelui::controls
