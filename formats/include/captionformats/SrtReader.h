#pragma once

#include "captionformats/CaptionReader.h"

namespace captionformats {

// SubRip (.srt), read the way files are found in the wild: cue numbers may be
// missing, repeated or out of order; a UTF-8 or UTF-16 byte order mark, CR LF or
// CR line ends, trailing spaces, and ',' or '.' before the fraction are taken.
// Text keeps <b>, <i>, <u> and <font color>; a {\anN} tag places the caption on
// the anchor grid. Captions are open captions.
class SrtReader final : public CaptionReader {
public:
    ReadResult Read(std::string_view bytes, const ReadOptions& options) const override;
};

} // namespace captionformats
