#pragma once

#include "captionformats/CaptionFileFormat.h"

#include <functional>
#include <optional>
#include <string_view>

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
//
// With `pieces`, the written bytes are handed to it in order as they are made,
// some tens of kilobytes at a time, so that a long file is never held whole;
// written.bytes then stays empty. What was handed is the output only when the
// conversion answers and its read succeeds: after nothing or a failed read,
// the caller throws the pieces away.
std::optional<Conversion> ConvertDirectly(CaptionFileFormat from, CaptionFileFormat to,
                                          std::string_view bytes, const ReadOptions& readOptions,
                                          const WriteOptions& writeOptions,
                                          const std::function<void(std::string_view)>& pieces = {});

} // namespace captionformats
