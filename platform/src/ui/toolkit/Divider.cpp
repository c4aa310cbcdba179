#include "zelui/controls/UI_Divider.h"

#include "zelui/drawbot/Drawbot.h"

namespace zelui::controls {

void UI_Divider::UI_Draw(drawbot::Drawbot& drawbot) {
    const UI_Rect bounds = GetBounds();
    const ui::UI_Color color = ui::GetColor(ui::kUIColor_ControlFrame);
    if (bounds.Height() >= bounds.Width()) {
        const float x = bounds.left + static_cast<float>(static_cast<int>(bounds.Width() / 2));
        drawbot.FillRect({x, bounds.top, x + 1, bounds.bottom}, color);
    } else {
        const float y = bounds.top + static_cast<float>(static_cast<int>(bounds.Height() / 2));
        drawbot.FillRect({bounds.left, y, bounds.right, y + 1}, color);
    }
}

} // namespace zelui::controls
