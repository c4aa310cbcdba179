#pragma once

#include "captionformats/CaptionWriter.h"

namespace captionformats {

// WebVTT in UTF-8, times rounded to the millisecond. Keeps bold, italics,
// underline, the colours of the WebVTT colour classes, grid anchors, free
// positions and alignment; reports everything else it drops.
class WebVttWriter final : public CaptionWriter {
public:
    WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                      const WriteOptions& options) const override;
};

} // namespace captionformats
