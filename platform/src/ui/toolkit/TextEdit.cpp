#include "zelui/controls/UI_TextEdit.h"

#include "input/QtConversions.h"
#include "toolkit/ControlImpl.h"
#include "toolkit/LineBreaks.h"
#include "zelui/ui/UI_Events.h"

#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

namespace zelui::controls {
namespace {

QPlainTextEdit* EditOf(const UI_TextEdit& control) {
    return platform::ui::ControlWidget<QPlainTextEdit>(control);
}

bool HasSelection(const QPlainTextEdit* edit) {
    return edit && edit->textCursor().hasSelection();
}

} // namespace

UI_TextEdit::UI_TextEdit(std::uint32_t flags, ControlAlignment alignment)
    : UI_InteractiveControlView(std::make_unique<Impl>(new QPlainTextEdit()))
    , flags_(flags) {
    QPlainTextEdit* edit = EditOf(*this);
    edit->setReadOnly((flags & kTextEdit_ReadOnly) != 0);
    edit->setTabChangesFocus(true);
    if ((flags & kTextEdit_MultiLine) == 0) {
        edit->setLineWrapMode(QPlainTextEdit::NoWrap);
        edit->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    QTextOption option = edit->document()->defaultTextOption();
    option.setAlignment(alignment == kControlAlignment_Right    ? Qt::AlignRight
                        : alignment == kControlAlignment_Center ? Qt::AlignHCenter
                                                                : Qt::AlignLeft);
    edit->document()->setDefaultTextOption(option);
    QObject::connect(edit, &QPlainTextEdit::textChanged, [this] { UserEdited(); });
}

UI_TextEdit::~UI_TextEdit() = default;

void UI_TextEdit::UserEdited() {
    if (settingValue_) {
        return;
    }
    editedSinceFocus_ = true;
    NotifyChangedInteractively(kInteractiveChange_Intermediate);
    NotifyChanged();
}

bool UI_TextEdit::UI_DoKeyboardEvent(const ui::UI_KeyboardEvent& event) {
    return (flags_ & kTextEdit_MultiLine) == 0 &&
           event.GetKeyboardCode() == ui::kKeyboardCode_Return;
}

void UI_TextEdit::UI_FocusChanged(UI_FocusChange change) {
    if (change == kFocusChange_Lost && std::exchange(editedSinceFocus_, false)) {
        NotifyChangedInteractively(kInteractiveChange_Final);
    }
}

zelcore::UTF16String UI_TextEdit::GetValue() const {
    const QPlainTextEdit* edit = EditOf(*this);
    return edit ? platform::ui::ToUTF16(platform::ui::WithCRLFBreaks(edit->toPlainText()))
                : zelcore::UTF16String();
}

void UI_TextEdit::SetValue(const zelcore::UTF16String& text) {
    if (QPlainTextEdit* edit = EditOf(*this)) {
        settingValue_ = true;
        edit->setPlainText(
            platform::ui::WithDocumentBreaks(platform::ui::ToQString(zelcore::View(text))));
        settingValue_ = false;
    }
}

void UI_TextEdit::GetSelection(std::int64_t& start, std::int64_t& end) const {
    start = 0;
    end = 0;
    if (const QPlainTextEdit* edit = EditOf(*this)) {
        const QString text = edit->toPlainText();
        const QTextCursor cursor = edit->textCursor();
        start = platform::ui::ValueOffsetOf(text, cursor.selectionStart());
        end = platform::ui::ValueOffsetOf(text, cursor.selectionEnd());
    }
}

void UI_TextEdit::SetSelection(std::int64_t start, std::int64_t end) {
    QPlainTextEdit* edit = EditOf(*this);
    if (!edit) {
        return;
    }
    const QString text = edit->toPlainText();
    const std::int64_t first = platform::ui::DocumentPositionOf(text, start);
    const std::int64_t last =
        end < start ? text.size() : platform::ui::DocumentPositionOf(text, end);
    QTextCursor cursor = edit->textCursor();
    cursor.setPosition(static_cast<int>(first));
    cursor.setPosition(static_cast<int>(last), QTextCursor::KeepAnchor);
    edit->setTextCursor(cursor);
}

UI_TextFont UI_TextEdit::GetFont() const {
    const QPlainTextEdit* edit = EditOf(*this);
    if (!edit) {
        return {};
    }
    const QFont font = edit->font();
    return {platform::ui::ToUTF16(font.family()), platform::ui::ToUTF16(font.styleName()),
            static_cast<float>(font.pointSizeF())};
}

void UI_TextEdit::SetFont(const UI_TextFont& font) {
    if (QPlainTextEdit* edit = EditOf(*this)) {
        QFont qfont(platform::ui::ToQString(zelcore::View(font.family)));
        qfont.setStyleName(platform::ui::ToQString(zelcore::View(font.styleName)));
        qfont.setPointSizeF(font.sizePoints > 0.0f ? font.sizePoints : 10.0);
        edit->setFont(qfont);
    }
}

bool UI_TextEdit::CanDelete() const {
    const QPlainTextEdit* edit = EditOf(*this);
    return HasSelection(edit) && !edit->isReadOnly();
}

bool UI_TextEdit::CanCopy() const {
    return HasSelection(EditOf(*this));
}

bool UI_TextEdit::CanCut() const {
    return CanDelete();
}

bool UI_TextEdit::CanPaste() const {
    const QPlainTextEdit* edit = EditOf(*this);
    return edit && !edit->isReadOnly() && edit->canPaste();
}

bool UI_TextEdit::CanUndo() const {
    const QPlainTextEdit* edit = EditOf(*this);
    return edit && !edit->isReadOnly() && edit->document()->isUndoAvailable();
}

bool UI_TextEdit::CanRedo() const {
    const QPlainTextEdit* edit = EditOf(*this);
    return edit && !edit->isReadOnly() && edit->document()->isRedoAvailable();
}

void UI_TextEdit::Delete() {
    if (CanDelete()) {
        QTextCursor cursor = EditOf(*this)->textCursor();
        cursor.removeSelectedText();
        EditOf(*this)->setTextCursor(cursor);
    }
}

void UI_TextEdit::Copy() {
    if (QPlainTextEdit* edit = EditOf(*this)) {
        edit->copy();
    }
}

void UI_TextEdit::Cut() {
    if (CanCut()) {
        EditOf(*this)->cut();
    }
}

void UI_TextEdit::Paste() {
    if (CanPaste()) {
        EditOf(*this)->paste();
    }
}

void UI_TextEdit::Undo() {
    if (CanUndo()) {
        EditOf(*this)->undo();
    }
}

void UI_TextEdit::Redo() {
    if (CanRedo()) {
        EditOf(*this)->redo();
    }
}

void UI_TextEdit::ScrollToBegin() {
    if (QPlainTextEdit* edit = EditOf(*this)) {
        edit->verticalScrollBar()->setValue(edit->verticalScrollBar()->minimum());
        edit->horizontalScrollBar()->setValue(edit->horizontalScrollBar()->minimum());
    }
}

} // namespace zelui::controls
