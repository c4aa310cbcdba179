#pragma once

#include "captionformats/FormatResults.h"

#include <string>
#include <string_view>

namespace captionformats {

struct ReadOptions {
    // Named in every diagnostic; the reader never opens it.
    std::string fileName;
};

// Turns a file's bytes into captions. Every reader accepts any input: it never
// crashes, never hangs, and takes time and memory in proportion to the input.
class CaptionReader {
public:
    virtual ~CaptionReader() = default;
    virtual ReadResult Read(std::string_view bytes, const ReadOptions& options) const = 0;
};

} // namespace captionformats
