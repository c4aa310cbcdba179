#include "input/KeyTranslation.h"

namespace platform::ui {
namespace {

using zelui::ui::KeyboardCode;

KeyboardCode CodeOfKey(int key) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return zelui::ui::kKeyboardCode_Return;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return zelui::ui::kKeyboardCode_FieldAdvance;
    case Qt::Key_Backspace:
        return zelui::ui::kKeyboardCode_Backspace;
    case Qt::Key_Delete:
        return zelui::ui::kKeyboardCode_Delete;
    case Qt::Key_Escape:
        return zelui::ui::kKeyboardCode_Cancel;
    case Qt::Key_Left:
        return zelui::ui::kKeyboardCode_Left;
    case Qt::Key_Right:
        return zelui::ui::kKeyboardCode_Right;
    case Qt::Key_Up:
        return zelui::ui::kKeyboardCode_Up;
    case Qt::Key_Down:
        return zelui::ui::kKeyboardCode_Down;
    case Qt::Key_Home:
        return zelui::ui::kKeyboardCode_Home;
    case Qt::Key_End:
        return zelui::ui::kKeyboardCode_End;
    case Qt::Key_PageUp:
        return zelui::ui::kKeyboardCode_PageUp;
    case Qt::Key_PageDown:
        return zelui::ui::kKeyboardCode_PageDown;
    default:
        break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return zelui::ui::kKeyboardCode_Function;
    }
    return zelui::ui::kKeyboardCode_None;
}

// Virtual-key numbers of the keys that type no character.
int VirtualKeyOf(int key) {
    switch (key) {
    case Qt::Key_Backspace:
        return 8;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return 13;
    case Qt::Key_Escape:
        return 27;
    case Qt::Key_PageUp:
        return 33;
    case Qt::Key_PageDown:
        return 34;
    case Qt::Key_End:
        return 35;
    case Qt::Key_Home:
        return 36;
    case Qt::Key_Left:
        return 37;
    case Qt::Key_Up:
        return 38;
    case Qt::Key_Right:
        return 39;
    case Qt::Key_Down:
        return 40;
    case Qt::Key_Insert:
        return 45;
    case Qt::Key_Delete:
        return 46;
    default:
        break;
    }
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) {
        return 112 + (key - Qt::Key_F1);
    }
    return 0;
}

// The character the event types, or 0 for a control character or none.
char32_t TypedCharacter(const QKeyEvent& event) {
    const QString text = event.text();
    if (text.isEmpty()) {
        return 0;
    }
    const char32_t character = text.toUcs4().value(0);
    return character >= 0x20 && character != 0x7f ? character : 0;
}

} // namespace

std::uint32_t ToKeyModifiers(Qt::KeyboardModifiers modifiers) {
    std::uint32_t bits = 0;
    if (modifiers & Qt::ControlModifier) {
        bits |= zelui::ui::kKeyModifier_Control;
    }
    if (modifiers & Qt::ShiftModifier) {
        bits |= zelui::ui::kKeyModifier_Shift;
    }
    if (modifiers & Qt::AltModifier) {
        bits |= zelui::ui::kKeyModifier_Alt;
    }
    if (modifiers & Qt::MetaModifier) {
        bits |= zelui::ui::kKeyModifier_Meta;
    }
    return bits;
}

zelui::ui::UI_KeyboardEvent ToKeyboardEvent(const QKeyEvent& event) {
    const auto type = event.type() == QEvent::KeyRelease ? zelui::ui::kKeyEventType_Release
                                                         : zelui::ui::kKeyEventType_Press;
    std::uint32_t modifiers = ToKeyModifiers(event.modifiers());
    if (event.key() == Qt::Key_Backtab) {
        modifiers |= zelui::ui::kKeyModifier_Shift;
    }
    KeyboardCode code = CodeOfKey(event.key());
    const char32_t character = code == zelui::ui::kKeyboardCode_None ? TypedCharacter(event) : 0;
    if (code == zelui::ui::kKeyboardCode_None) {
        code = character ? zelui::ui::kKeyboardCode_Character : zelui::ui::kKeyboardCode_Other;
    }
    const std::int32_t functionKey =
        code == zelui::ui::kKeyboardCode_Function ? event.key() - Qt::Key_F1 + 1 : 0;
    return zelui::ui::UI_KeyboardEvent(type, code, character, modifiers, functionKey);
}

std::int32_t ToViewKeyCode(const QKeyEvent& event) {
    if (const int virtualKey = VirtualKeyOf(event.key())) {
        return -virtualKey;
    }
    return static_cast<std::int32_t>(TypedCharacter(event));
}

zelui::ui::UI_MouseButton ToMouseButton(Qt::MouseButton button) {
    switch (button) {
    case Qt::LeftButton:
        return zelui::ui::kMouseButton_First;
    case Qt::RightButton:
        return zelui::ui::kMouseButton_Second;
    case Qt::MiddleButton:
        return zelui::ui::kMouseButton_Middle;
    default:
        return zelui::ui::kMouseButton_None;
    }
}

} // namespace platform::ui
