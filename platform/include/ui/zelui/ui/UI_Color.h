#pragma once

#include <cstdint>
#include <ostream>

namespace zelui::ui {

// An sRGB colour with straight alpha, one byte a component.
struct UI_Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    friend bool operator==(const UI_Color&, const UI_Color&) = default;
    friend std::ostream& operator<<(std::ostream& os, const UI_Color& c) {
        return os << "rgba(" << int{c.red} << ", " << int{c.green} << ", " << int{c.blue} << ", "
                  << int{c.alpha} << ")";
    }
};

// A colour given as components from 0.0 to 1.0 that no colour management
// converts: it is shown as given.
struct UnmanagedColor {
    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 1.0f;

    friend bool operator==(const UnmanagedColor&, const UnmanagedColor&) = default;
};

// Entries of the toolkit's colour table (GetColor). The numbers are fixed.
enum UI_ColorIndex : std::uint32_t {
    kUIColor_ControlText = 1,
    kUIColor_ControlTextDisabled = 2,
    kUIColor_ControlBackground = 3,
    kUIColor_ControlFrame = 4,
    kUIColor_HotText = 5,
    kUIColor_Selection = 6,
    // The cells and connecting lines of small position grids.
    kUIColor_GridCell = 278,
    kUIColor_GridCellDisabled = 279,
    kUIColor_GridLine = 280,
    kUIColor_GridLineDisabled = 281,
};

// The table's colour for the index in the current theme; an index the table
// does not hold gives opaque magenta, so a wrong index shows at once.
UI_Color GetColor(std::uint32_t colorIndex);

} // namespace zelui::ui
