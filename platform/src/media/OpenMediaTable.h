#pragma once

#include "MediaDecoder.h"

#include <cstddef>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace platform::media {

// The media files kept open, by path, at most a fixed number; the least recently used is
// closed first (once the request using it lets go). Thread-safe.
class OpenMediaTable {
public:
    explicit OpenMediaTable(std::size_t maxOpenCount)
        : maxOpenCount_(maxOpenCount) {}

    // The open decoder of the file, opening it on first use. A file that fails to open is not
    // remembered, so a file put in place later is found. Throws MediaError.
    std::shared_ptr<MediaDecoder> Acquire(const std::string& pathUtf8);

private:
    using Entry = std::pair<std::string, std::shared_ptr<MediaDecoder>>;

    const std::size_t maxOpenCount_;
    std::mutex mutex_;
    std::list<Entry> recency_; // most recently used first
};

} // namespace platform::media
