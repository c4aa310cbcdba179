#pragma once

#include "captionformats/CaptionReader.h"

namespace captionformats {

// WebVTT by the W3C parsing algorithm (see ParseWebVttDocument), each cue
// becoming an open caption: its text lines become paragraphs, b/i/u and the
// colour classes become span attributes, and the line, position and align
// settings place it (see FORMATS.md). Regions, vertical text, size and STYLE
// blocks are reported as dropped.
class WebVttReader final : public CaptionReader {
public:
    ReadResult Read(std::string_view bytes, const ReadOptions& options) const override;
};

} // namespace captionformats
