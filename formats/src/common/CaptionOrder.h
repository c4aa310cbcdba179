#pragma once

#include "zelcaptioning/Caption.h"

#include <vector>

namespace captionformats {

// The captions sorted by begin time, equal begins keeping their order; null
// entries left out.
std::vector<zelcaptioning::CaptionPtr>
SortedByBegin(const std::vector<zelcaptioning::CaptionPtr>& captions);

} // namespace captionformats
