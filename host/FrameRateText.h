#pragma once

#include "zelmediatypes/FrameRate.h"

#include <QString>

namespace host {

// A frame rate as people write it: frames per second to three decimals at
// most, without trailing zeros ("29.97", "23.976", "25").
QString FrameRateText(const zelmediatypes::FrameRate& rate);

} // namespace host
