#pragma once

#include "KSL/ImmutableString.h"

#include <string_view>

namespace platform::core {

// A station name no other object of this process has: the prefix and a serial
// number.
KSL::StationID MakeUniqueStationID(std::string_view prefix);

} // namespace platform::core
