#include "OpenMediaTable.h"

#include <algorithm>

namespace platform::media {

std::shared_ptr<MediaDecoder> OpenMediaTable::Acquire(const std::string& pathUtf8) {
    const auto isPath = [&pathUtf8](const Entry& entry) {
        return entry.first == pathUtf8;
    };
    {
        std::lock_guard lock(mutex_);
        if (const auto found = std::find_if(recency_.begin(), recency_.end(), isPath);
            found != recency_.end()) {
            recency_.splice(recency_.begin(), recency_, found);
            return found->second;
        }
    }
    // Opening reads the file's headers, so other workers are not held up meanwhile.
    auto opened = std::make_shared<MediaDecoder>(pathUtf8);
    std::lock_guard lock(mutex_);
    if (const auto found = std::find_if(recency_.begin(), recency_.end(), isPath);
        found != recency_.end()) {
        return found->second; // another worker opened it first
    }
    recency_.emplace_front(pathUtf8, opened);
    while (recency_.size() > maxOpenCount_) {
        recency_.pop_back();
    }
    return opened;
}

} // namespace platform::media
