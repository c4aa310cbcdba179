#include "drawing/Palette.h"

#include <QGuiApplication>

namespace platform::ui {

QPalette ApplicationPalette() {
    return QGuiApplication::palette();
}

QColor Blend(const QColor& from, const QColor& to, double fraction) {
    auto mix = [fraction](int a, int b) {
        return static_cast<int>(a + (b - a) * fraction + 0.5);
    };
    return QColor(mix(from.red(), to.red()), mix(from.green(), to.green()),
                  mix(from.blue(), to.blue()), mix(from.alpha(), to.alpha()));
}

} // namespace platform::ui
