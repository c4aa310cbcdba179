#pragma once

#include <cstdint>

namespace zelui::ui {

// The toolkit's key codes: what a key means, not where it is. Keys that type a
// character have kKeyboardCode_Character and carry the character.
enum KeyboardCode : std::int32_t {
    kKeyboardCode_None = 0,
    kKeyboardCode_Character = 1,
    kKeyboardCode_Return = 2,       // Return and the keypad's Enter
    kKeyboardCode_FieldAdvance = 3, // Tab; with Shift, back
    kKeyboardCode_Backspace = 4,
    kKeyboardCode_Delete = 5,
    kKeyboardCode_Cancel = 6, // Escape
    kKeyboardCode_Left = 7,
    kKeyboardCode_Right = 8,
    kKeyboardCode_Up = 9,
    kKeyboardCode_Down = 10,
    kKeyboardCode_Home = 11,
    kKeyboardCode_End = 12,
    kKeyboardCode_PageUp = 13,
    kKeyboardCode_PageDown = 14,
    kKeyboardCode_Function = 15, // F1 to F24; the event carries the number
    kKeyboardCode_Other = 16,
};

// Modifier bits of key and mouse events.
enum KeyModifier : std::uint32_t {
    kKeyModifier_Control = 1,
    kKeyModifier_Shift = 2,
    kKeyModifier_Alt = 4,
    kKeyModifier_Meta = 8,
};

// Whether the key with the virtual-key number is held down now. Answers for
// 16 (Shift), 17 (Control) and 18 (Alt); false for every other number.
bool GetKeyState(std::int32_t virtualKey);

} // namespace zelui::ui
