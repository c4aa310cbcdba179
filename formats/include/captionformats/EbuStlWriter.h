#pragma once

#include "captionformats/CaptionWriter.h"

namespace captionformats {

// EBU STL (Tech 3264) at 25 or 30 fps (STL25.01, STL30.01) for teletext level 1
// (code table 00):
// a GSI block, then one TTI block per subtitle (extension blocks when its text
// needs them). Lines stay on their rows (double height when two rows apart,
// as teletext subtitles usually are), justified by their alignment; text
// colours of the teletext palette become colour codes (in place of a space
// where the text has one), italics and underline their open-subtitle codes.
// Times are rounded down to frames; everything else is reported.
class EbuStlWriter final : public CaptionWriter {
public:
    WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                      const WriteOptions& options) const override;
};

} // namespace captionformats
