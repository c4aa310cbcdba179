#pragma once

#include "captionformats/CaptionWriter.h"

namespace captionformats {

// TTML in the shape of IMSC 1.1 Text: one <p> per caption in one <div>, its
// lines separated by <br/>, spans with their tts: styles (colour and
// background with opacity, font family and size in pixels, italics, bold,
// underline, a uniform edge as tts:textOutline), tts:textAlign per paragraph,
// and one region per placement: the whole area with a displayAlign for a grid
// row, or an origin for a free position. Times are clock times when they fall
// on a millisecond, else exact ticks (ttp:tickRate is our tick rate).
class TtmlWriter final : public CaptionWriter {
public:
    WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                      const WriteOptions& options) const override;
};

} // namespace captionformats
