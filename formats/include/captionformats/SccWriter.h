#pragma once

#include "captionformats/CaptionWriter.h"

namespace captionformats {

// Scenarist SCC through our CEA-608 encoder on channel 1, at 29.97 fps with
// drop-frame or non-drop time codes. A pop-on caption is loaded before its
// begin so that its EOC falls on the begin frame; roll-up and paint-on captions
// start on their begin frame; EDM ends a caption unless the next one replaces
// it on that frame. One byte pair goes out per frame: a caption that cannot be
// sent in time is sent as soon as it can and reported with its delay, never
// moved silently. Lines keep their rows and columns (unplaced lines are laid
// out by their anchor), colours of the 608 palette, italics, underline and
// backgrounds; everything else is reported.
class SccWriter final : public CaptionWriter {
public:
    WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                      const WriteOptions& options) const override;
};

} // namespace captionformats
