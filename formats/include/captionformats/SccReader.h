#pragma once

#include "captionformats/CaptionReader.h"

namespace captionformats {

// Scenarist SCC: CEA-608 byte pairs as four hex digits after SMPTE time codes
// at 29.97 fps (';' drop-frame, ':' non-drop), one pair per frame. The pairs go
// through our CEA-608 decoder (channel 1 of field 1); its pop-on, roll-up and
// paint-on captions keep their type and their rows and columns on the 32 × 15
// grid. Captions belong to the CEA-608 stream format.
class SccReader final : public CaptionReader {
public:
    ReadResult Read(std::string_view bytes, const ReadOptions& options) const override;
};

} // namespace captionformats
