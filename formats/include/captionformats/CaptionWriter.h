#pragma once

#include "captionformats/FormatResults.h"

#include <string>
#include <vector>

namespace captionformats {

struct WriteOptions {
    // Named in every diagnostic; the writer never opens it.
    std::string fileName;
    // Time codes of frame-based formats (SCC): drop-frame (';') or non-drop (':').
    bool dropFrameTimecode = true;
    // Frames per second of EBU STL: 25 or 30 (SCC always runs at 29.97).
    int framesPerSecond = 25;
};

// Turns captions into a file's bytes, reporting as warnings what the format
// cannot carry. Captions are written in begin-time order.
class CaptionWriter {
public:
    virtual ~CaptionWriter() = default;
    virtual WriteResult Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                              const WriteOptions& options) const = 0;
};

} // namespace captionformats
