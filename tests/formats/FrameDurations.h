#pragma once

#include "zelmediatypes/TickTime.h"

namespace formats_test {

// A frame at 29.97 frames per second, the rate of SCC files.
inline const zelmediatypes::TickTime kNtscFrame{zelmediatypes::kTicksPerSecond * 1001 / 30000};
// A frame at 25 frames per second, the rate of the STL files the tests write.
inline const zelmediatypes::TickTime kPalFrame{zelmediatypes::kTicksPerSecond / 25};

} // namespace formats_test
