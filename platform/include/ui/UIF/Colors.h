#pragma once

#include "zelui/ui/UI_Color.h"

#include <cstdint>

namespace UIF {

// The host's named colours; their values follow the application's palette.
enum ColorID : std::int32_t {
    kColor_WindowBackground = 1,
    // Reversible colours keep their contrast against the window background in
    // light and dark palettes: a highlight grey, and the text colour.
    kColor_ReversibleGray = 2,
    kColor_ReversibleBlack = 3,
};

zelui::ui::UI_Color GetColor(ColorID color);

} // namespace UIF
