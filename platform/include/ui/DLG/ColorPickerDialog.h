#pragma once

#include "zelui/ui/UI_Color.h"

namespace DLG {

// The host's colour dialog.
class ColorPickerDialog {
public:
    // Opens modally with the initial colour. Returns true and sets chosenColor
    // (opaque) when the user accepts; false when the user cancels.
    static bool PickColor(const zelui::ui::UI_Color& initialColor,
                          zelui::ui::UI_Color& chosenColor);
};

} // namespace DLG
