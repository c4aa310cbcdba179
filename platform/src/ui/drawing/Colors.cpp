#include "UIF/Colors.h"

#include "drawing/Palette.h"
#include "input/QtConversions.h"

namespace UIF {

zelui::ui::UI_Color GetColor(ColorID color) {
    const QPalette palette = platform::ui::ApplicationPalette();
    switch (color) {
    case kColor_WindowBackground:
        return platform::ui::ToUIColor(palette.color(QPalette::Window));
    case kColor_ReversibleGray:
        return platform::ui::ToUIColor(platform::ui::Blend(
            palette.color(QPalette::Window), palette.color(QPalette::WindowText), 0.2));
    case kColor_ReversibleBlack:
        return platform::ui::ToUIColor(palette.color(QPalette::WindowText));
    }
    return {255, 0, 255, 255};
}

} // namespace UIF
