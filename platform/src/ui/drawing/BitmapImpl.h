#pragma once

#include "UIF/Bitmap.h"

#include <QImage>

namespace UIF {

struct Bitmap::Impl {
    QImage image;
};

} // namespace UIF

namespace platform::ui {

// Paints the decal for the palette; a null image for an unknown number.
QImage PaintDecal(UIF::DecalID decal);

} // namespace platform::ui
