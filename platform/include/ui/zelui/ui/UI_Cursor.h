#pragma once

#include <cstdint>

namespace zelui::controls {
class UI_ControlView;
}

namespace zelui::ui {

enum UI_CursorID : std::uint32_t {
    kCursor_Arrow = 1,
    kCursor_IBeam = 2,
    kCursor_Crosshair = 3,
    kCursor_PointingHand = 4,
    kCursor_SizeHorizontal = 5,
    kCursor_SizeVertical = 6,
    kCursor_Move = 7,
    kCursor_Forbidden = 8,
    kCursor_Wait = 9,
    // No cursor of the control's own: the toolkit's default applies.
    kCursor_Default = 30,
};

// Asked of a control while the pointer moves over it (UI_DoCursor).
class UI_CursorRequest {
public:
    UI_CursorRequest(const controls::UI_ControlView* target, float x, float y)
        : target_(target)
        , x_(x)
        , y_(y) {}
    // The control the pointer is over.
    const controls::UI_ControlView* GetTarget() const { return target_; }
    float GetX() const { return x_; }
    float GetY() const { return y_; }

private:
    const controls::UI_ControlView* target_;
    float x_;
    float y_;
};

// Sets the cursor for the request being answered; a control that calls it
// returns true from UI_DoCursor.
class UI_ResourceManager {
public:
    static void SetCursor(UI_CursorID cursor);
    // The cursor the last answered request chose.
    static UI_CursorID GetCursor();
};

} // namespace zelui::ui
