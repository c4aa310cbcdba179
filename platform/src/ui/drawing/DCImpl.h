#pragma once

#include "UIF/DC.h"

#include <QFont>
#include <QPainter>
#include <QRect>

namespace UIF {

struct DC::Impl {
    Impl(QPainter& painterToUse, const QRect& area)
        : painter(painterToUse)
        , clipArea(area) {}
    QPainter& painter;
    QRect clipArea;
};

} // namespace UIF

namespace platform::ui {

QFont FontOf(UIF::FontID font);

} // namespace platform::ui
