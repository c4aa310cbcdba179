#pragma once

#include "FrameCacheKey.h"
#include "VF/VideoFrame.h"

#include <cstddef>
#include <list>
#include <map>
#include <mutex>
#include <utility>

namespace platform::media {

// Decoded frames by media, time and size, within a budget of pixel bytes; the least recently
// used frame goes first. Thread-safe.
class FrameCache {
public:
    explicit FrameCache(std::size_t budgetBytes)
        : budgetBytes_(budgetBytes) {}

    // Null when absent; a hit makes the frame the most recently used.
    VF::VideoFrameRef Find(const FrameCacheKey& key);

    // Replaces a frame under the same key. A frame larger than the whole budget is not kept.
    void Insert(const FrameCacheKey& key, VF::VideoFrameRef frame);

    std::size_t GetFrameCount() const;
    std::size_t GetBytes() const;

private:
    using Entry = std::pair<FrameCacheKey, VF::VideoFrameRef>;

    void EraseLocked(std::list<Entry>::iterator entry);

    const std::size_t budgetBytes_;
    mutable std::mutex mutex_;
    std::list<Entry> recency_; // most recently used first
    std::map<FrameCacheKey, std::list<Entry>::iterator> byKey_;
    std::size_t bytes_ = 0;
};

} // namespace platform::media
