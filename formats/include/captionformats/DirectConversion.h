#pragma once

#include "captionformats/CaptionFileFormat.h"

#include <optional>

namespace captionformats {

// A file converted from one format to another: what reading found and what
// was written.
struct Conversion {
    std::size_t captionCount = 0;
    ReadResult read;     // a direct conversion leaves its captions empty
    WriteResult written; // empty when reading failed
};

// Converts straight from one format's bytes to another's, caption by caption,
// without building the caption model. Where it answers, the result equals
// reading the bytes with MakeReader(from) and, when that succeeds, writing the
// captions with MakeWriter(to): the same bytes, the same warnings and errors.
// Nothing for a pair without a direct path (SubRip to WebVTT and SCC to SubRip
// have one), or for a file that needs the general path (SubRip cues or SCC
// captions out of time order).
std::optional<Conversion> ConvertDirectly(CaptionFileFormat from, CaptionFileFormat to,
                                          std::string_view bytes, const ReadOptions& readOptions,
                                          const WriteOptions& writeOptions);

} // namespace captionformats
