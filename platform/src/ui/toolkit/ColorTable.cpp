#include "zelui/ui/UI_Color.h"

#include "drawing/Palette.h"
#include "input/QtConversions.h"

namespace zelui::ui {

UI_Color GetColor(std::uint32_t colorIndex) {
    const QPalette palette = platform::ui::ApplicationPalette();
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    QColor color;
    switch (colorIndex) {
    case kUIColor_ControlText:
        color = palette.color(QPalette::Active, QPalette::Text);
        break;
    case kUIColor_ControlTextDisabled:
        color = palette.color(QPalette::Disabled, QPalette::Text);
        break;
    case kUIColor_ControlBackground:
        color = palette.color(QPalette::Base);
        break;
    case kUIColor_ControlFrame:
        color = platform::ui::Blend(window, text, 0.45);
        break;
    case kUIColor_HotText:
        color = palette.color(QPalette::Link);
        break;
    case kUIColor_Selection:
        color = palette.color(QPalette::Highlight);
        break;
    case kUIColor_GridCell:
        color = platform::ui::Blend(window, text, 0.75);
        break;
    case kUIColor_GridCellDisabled:
        color = platform::ui::Blend(window, text, 0.35);
        break;
    case kUIColor_GridLine:
        color = platform::ui::Blend(window, text, 0.5);
        break;
    case kUIColor_GridLineDisabled:
        color = platform::ui::Blend(window, text, 0.2);
        break;
    default:
        return {255, 0, 255, 255};
    }
    return platform::ui::ToUIColor(color);
}

} // namespace zelui::ui
