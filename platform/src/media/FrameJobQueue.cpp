#include "FrameJobQueue.h"

#include <algorithm>
#include <utility>

namespace platform::media {

void FrameJobQueue::Push(FrameJob job) {
    {
        std::lock_guard lock(mutex_);
        if (closed_) {
            return;
        }
        waiting_.push_back(std::move(job));
    }
    jobWaiting_.notify_one();
}

std::optional<FrameJob> FrameJobQueue::Pop() {
    std::unique_lock lock(mutex_);
    jobWaiting_.wait(lock, [this] { return closed_ || !waiting_.empty(); });
    if (closed_) {
        return std::nullopt;
    }
    FrameJob job = std::move(waiting_.front());
    waiting_.pop_front();
    running_.insert(job.requestID);
    return job;
}

void FrameJobQueue::Cancel(ML::RequestID requestID) {
    std::lock_guard lock(mutex_);
    if (running_.contains(requestID)) {
        cancelledRunning_.insert(requestID);
        return;
    }
    std::erase_if(waiting_,
                  [requestID](const FrameJob& job) { return job.requestID == requestID; });
}

bool FrameJobQueue::IsCancelled(ML::RequestID requestID) const {
    std::lock_guard lock(mutex_);
    return IsCancelledLocked(requestID);
}

bool FrameJobQueue::DeliverUnlessCancelled(ML::RequestID requestID,
                                           const std::function<void()>& deliver) {
    std::lock_guard lock(mutex_);
    if (IsCancelledLocked(requestID)) {
        return false;
    }
    deliver();
    return true;
}

void FrameJobQueue::Finish(ML::RequestID requestID) {
    std::lock_guard lock(mutex_);
    running_.erase(requestID);
    cancelledRunning_.erase(requestID);
}

void FrameJobQueue::Close() {
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        waiting_.clear();
    }
    jobWaiting_.notify_all();
}

bool FrameJobQueue::IsCancelledLocked(ML::RequestID requestID) const {
    return closed_ || cancelledRunning_.contains(requestID);
}

} // namespace platform::media
