#pragma once

#include "zelui/controls/UI_ControlView.h"
#include "zelui/ui/UI_Color.h"

namespace zelui::controls {

// A patch of colour; a click on it, or Space or Return while it has the
// keyboard focus, notifies a change (the owner decides what choosing a colour
// means).
class UI_Swatch : public UI_ControlView {
public:
    UI_Swatch();

    ui::UnmanagedColor GetValue() const { return value_; }
    void SetValue(const ui::UnmanagedColor& color);
    void SetShowBorder(bool showBorder);

    void UI_Draw(drawbot::Drawbot& drawbot) override;
    bool UI_DoMouseEvent(const ui::UI_MouseEvent& event) override;
    bool UI_DoKeyboardEvent(const ui::UI_KeyboardEvent& event) override;

private:
    ui::UnmanagedColor value_{1.0f, 1.0f, 1.0f, 1.0f};
    bool showBorder_ = false;
};

} // namespace zelui::controls
