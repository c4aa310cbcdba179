#include "zelui/controls/UI_Swatch.h"

#include "zelui/drawbot/Drawbot.h"
#include "zelui/ui/UI_Events.h"

#include <algorithm>
#include <cmath>

namespace zelui::controls {
namespace {

std::uint8_t ToByte(float component) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0f, 1.0f) * 255.0f));
}

} // namespace

UI_Swatch::UI_Swatch() {
    SetTakesKeyboardFocus(true);
}

void UI_Swatch::SetValue(const ui::UnmanagedColor& color) {
    value_ = color;
    Invalidate();
}

void UI_Swatch::SetShowBorder(bool showBorder) {
    showBorder_ = showBorder;
    Invalidate();
}

void UI_Swatch::UI_Draw(drawbot::Drawbot& drawbot) {
    UI_Rect patch = GetBounds();
    if (showBorder_) {
        drawbot.FillRect(patch, ui::GetColor(IsDisabled() ? ui::kUIColor_ControlTextDisabled
                                                          : ui::kUIColor_ControlFrame));
        patch = {patch.left + 1, patch.top + 1, patch.right - 1, patch.bottom - 1};
    }
    const ui::UI_Color color{ToByte(value_.red), ToByte(value_.green), ToByte(value_.blue),
                             ToByte(value_.alpha)};
    drawbot.FillRect(patch, color);
}

bool UI_Swatch::UI_DoMouseEvent(const ui::UI_MouseEvent& event) {
    if (event.GetType() != ui::kMouseEventType_Down ||
        event.GetButton() != ui::kMouseButton_First || IsDisabled()) {
        return false;
    }
    NotifyChanged();
    return true;
}

bool UI_Swatch::UI_DoKeyboardEvent(const ui::UI_KeyboardEvent& event) {
    if (!event.IsActivation() || IsDisabled()) {
        return false;
    }
    NotifyChanged();
    return true;
}

} // namespace zelui::controls
