#pragma once

#include "zelcore/geom/Rect.h"

#include <cstdint>

namespace UIF {

// View and control frames in whole pixels.
using Rect = zelcore::geom::RectT<std::int32_t>;

} // namespace UIF
