#pragma once

#include "zelui/controls/UI_ControlView.h"

namespace zelui::controls {

// A separating line along the longer side of its bounds, centred.
class UI_Divider : public UI_ControlView {
public:
    UI_Divider() = default;
    void UI_Draw(drawbot::Drawbot& drawbot) override;
};

} // namespace zelui::controls
