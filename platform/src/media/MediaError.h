#pragma once

#include <stdexcept>
#include <string>

namespace platform::media {

// A media file that cannot be opened or decoded. The text names the file and the problem and
// becomes the error frame's text.
class MediaError : public std::runtime_error {
public:
    explicit MediaError(const std::string& whatUtf8)
        : std::runtime_error(whatUtf8) {}
};

// Thrown through a decode whose request was cancelled; nothing is delivered for it.
class DecodeCancelled : public std::exception {
public:
    const char* what() const noexcept override { return "frame request cancelled"; }
};

} // namespace platform::media
