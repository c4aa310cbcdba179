#pragma once

#include "BE/MasterClipSettings.h"

#include <optional>
#include <string>

namespace ML {

struct MediaProbe {
    std::optional<BE::MasterClipSettings> settings; // empty when problem is set
    std::string problem;
};

// The settings of a master clip for a media file: named after the file, its
// first video stream's frame size, pixel aspect ratio and duration, and the
// host frame rate nearest to the stream's (the clip shows the file's frames at
// that rate). Reads only the file's headers.
MediaProbe ProbeMediaFile(const std::string& pathUtf8);

} // namespace ML
