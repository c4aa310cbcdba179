#include "FrameCache.h"

#include <iterator>

namespace platform::media {

VF::VideoFrameRef FrameCache::Find(const FrameCacheKey& key) {
    std::lock_guard lock(mutex_);
    const auto found = byKey_.find(key);
    if (found == byKey_.end()) {
        return nullptr;
    }
    recency_.splice(recency_.begin(), recency_, found->second);
    return found->second->second;
}

void FrameCache::Insert(const FrameCacheKey& key, VF::VideoFrameRef frame) {
    const std::size_t frameBytes = frame->GetByteCount();
    std::lock_guard lock(mutex_);
    if (const auto found = byKey_.find(key); found != byKey_.end()) {
        EraseLocked(found->second);
    }
    if (frameBytes > budgetBytes_) {
        return;
    }
    while (bytes_ + frameBytes > budgetBytes_) {
        EraseLocked(std::prev(recency_.end()));
    }
    recency_.emplace_front(key, std::move(frame));
    byKey_.emplace(key, recency_.begin());
    bytes_ += frameBytes;
}

std::size_t FrameCache::GetFrameCount() const {
    std::lock_guard lock(mutex_);
    return recency_.size();
}

std::size_t FrameCache::GetBytes() const {
    std::lock_guard lock(mutex_);
    return bytes_;
}

void FrameCache::EraseLocked(std::list<Entry>::iterator entry) {
    bytes_ -= entry->second->GetByteCount();
    byKey_.erase(entry->first);
    recency_.erase(entry);
}

} // namespace platform::media
