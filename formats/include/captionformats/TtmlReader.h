#pragma once

#include "captionformats/CaptionReader.h"

namespace captionformats {

// TTML, DFXP and IMSC 1.1 Text: each timed <p> becomes an open caption, its
// <br/> line breaks paragraphs and its <span>s spans. Times follow the time
// expressions of TTML (clock time with frames, offset time in h, m, s, ms, f
// and t) with ttp:frameRate, ttp:frameRateMultiplier and ttp:tickRate, and
// body, div and p begin times nest. Styles (tts:color, backgroundColor,
// fontFamily, fontSize, fontStyle, fontWeight, textDecoration, textOutline,
// textAlign) come by reference, inline and by inheritance from region, body,
// div, p and span; regions (origin, extent, displayAlign) place the lines
// (see FORMATS.md). What is not mapped is reported.
class TtmlReader final : public CaptionReader {
public:
    ReadResult Read(std::string_view bytes, const ReadOptions& options) const override;
};

} // namespace captionformats
