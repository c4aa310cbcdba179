#pragma once

#include "captionformats/CaptionFileFormat.h"

#include <string>
#include <vector>

namespace bench_formats {

// Two-line captions two seconds apart, the kind each format carries: grid
// lines for SCC and STL, styled spans for the text formats.
std::vector<zelcaptioning::CaptionPtr> TypicalCaptions(captionformats::CaptionFileFormat format,
                                                       int count);

// Such captions written in the format, made once per format and count.
const std::string& FileOf(captionformats::CaptionFileFormat format, int count);

} // namespace bench_formats
