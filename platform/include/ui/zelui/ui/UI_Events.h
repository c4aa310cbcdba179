#pragma once

#include "zelui/ui/KeyboardCode.h"

#include <cstdint>

namespace zelui::ui {

enum UI_KeyEventType : std::int32_t {
    kKeyEventType_Release = 1,
    kKeyEventType_Press = 2, // auto-repeat presses included
};

class UI_KeyboardEvent {
public:
    UI_KeyboardEvent(UI_KeyEventType type, KeyboardCode code, char32_t character,
                     std::uint32_t modifiers, std::int32_t functionKeyNumber = 0)
        : type_(type)
        , code_(code)
        , character_(character)
        , modifiers_(modifiers)
        , functionKeyNumber_(functionKeyNumber) {}

    UI_KeyEventType GetType() const { return type_; }
    KeyboardCode GetKeyboardCode() const { return code_; }
    // The character a character key types; 0 for other keys.
    char32_t GetCharacter() const { return character_; }
    // KeyModifier bits.
    std::uint32_t GetModifiers() const { return modifiers_; }
    std::int32_t GetFunctionKeyNumber() const { return functionKeyNumber_; }

    // True when the event is that key with exactly those modifiers.
    bool IsShortcut(KeyboardCode code, std::uint32_t modifiers) const {
        return code_ == code && modifiers_ == modifiers;
    }
    // A press of Space or Return with no modifier: what presses a focused
    // button or cell.
    bool IsActivation() const {
        return type_ == kKeyEventType_Press && modifiers_ == 0 &&
               (code_ == kKeyboardCode_Return ||
                (code_ == kKeyboardCode_Character && character_ == U' '));
    }

private:
    UI_KeyEventType type_;
    KeyboardCode code_;
    char32_t character_;
    std::uint32_t modifiers_;
    std::int32_t functionKeyNumber_;
};

enum UI_MouseEventType : std::int32_t {
    kMouseEventType_Down = 1,
    kMouseEventType_Up = 2,
    kMouseEventType_Move = 3,
    kMouseEventType_DoubleClick = 4,
    kMouseEventType_Wheel = 5,
};

enum UI_MouseButton : std::int32_t {
    kMouseButton_None = 0,
    kMouseButton_First = 1, // the primary (usually left) button
    kMouseButton_Second = 2,
    kMouseButton_Middle = 3,
};

// A pointer event. The position is in the receiver's coordinate space: a
// control's events share the space of its bounds (its view's client
// coordinates); a view's events are in its own client coordinates.
class UI_MouseEvent {
public:
    UI_MouseEvent(UI_MouseEventType type, UI_MouseButton button, float x, float y,
                  std::uint32_t modifiers, float wheelDelta = 0.0f)
        : type_(type)
        , button_(button)
        , x_(x)
        , y_(y)
        , modifiers_(modifiers)
        , wheelDelta_(wheelDelta) {}

    UI_MouseEventType GetType() const { return type_; }
    UI_MouseButton GetButton() const { return button_; }
    float GetX() const { return x_; }
    float GetY() const { return y_; }
    std::uint32_t GetModifiers() const { return modifiers_; }
    // Wheel notches, positive away from the user; fractions from fine wheels.
    float GetWheelDelta() const { return wheelDelta_; }

private:
    UI_MouseEventType type_;
    UI_MouseButton button_;
    float x_;
    float y_;
    std::uint32_t modifiers_;
    float wheelDelta_;
};

} // namespace zelui::ui
