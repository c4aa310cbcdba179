#pragma once

#include "captionformats/CaptionReader.h"

namespace captionformats {

// EBU STL (Tech 3264): the GSI block's disk format code gives the frame rate
// (STL25.01, STL30.01), its code page table must be 00 (ISO 6937); each
// subtitle (its TTI blocks with extension blocks joined; comments and user
// data left out) becomes a teletext subtitle caption with its time codes as
// written, its rows from the vertical position (two apart in double height),
// its justification, colours, italics and underline. A start-of-programme time
// code and overlapping subtitles are reported, not applied. Errors and
// warnings give byte offsets.
class EbuStlReader final : public CaptionReader {
public:
    ReadResult Read(std::string_view bytes, const ReadOptions& options) const override;
};

} // namespace captionformats
