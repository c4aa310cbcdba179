#pragma once

#include <QColor>
#include <QPalette>

namespace platform::ui {

// The application's palette (the default palette before a QApplication exists).
QPalette ApplicationPalette();

// from blended towards to by the fraction (0: from, 1: to).
QColor Blend(const QColor& from, const QColor& to, double fraction);

} // namespace platform::ui
