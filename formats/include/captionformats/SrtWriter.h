#pragma once

#include "captionformats/CaptionWriter.h"

namespace captionformats {

// SubRip (.srt) in UTF-8 with CR LF line ends, times rounded to the millisecond.
// Keeps bold, italics, underline and the text colour as tags, and the grid anchor
// of a caption's first line as a {\anN} tag; reports everything else it drops.
class SrtWriter final : public CaptionWriter {
public:
    WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                      const WriteOptions& options) const override;
};

} // namespace captionformats
