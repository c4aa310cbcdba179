#pragma once

#include "FrameJob.h"
#include "ML/FrameRequest.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <set>

namespace platform::media {

// The requests waiting for a worker, first come first served, and the ones being run, so that
// a cancellation reaches both. Thread-safe.
class FrameJobQueue {
public:
    void Push(FrameJob job);

    // Blocks until a job is waiting and hands it out as running; empty once closed.
    std::optional<FrameJob> Pop();

    // Drops a waiting job, or marks a running one cancelled. Other ids are ignored.
    void Cancel(ML::RequestID requestID);

    // True once the running job was cancelled or the queue closed: its work may stop early.
    bool IsCancelled(ML::RequestID requestID) const;

    // Runs `deliver` unless the running job was cancelled or the queue closed, under the lock
    // Cancel takes, so that nothing is delivered after Cancel returns. Returns whether it ran.
    bool DeliverUnlessCancelled(ML::RequestID requestID, const std::function<void()>& deliver);

    // The running job is done; a later Cancel of its id is ignored.
    void Finish(ML::RequestID requestID);

    // Wakes every Pop with nothing and drops the waiting jobs.
    void Close();

private:
    bool IsCancelledLocked(ML::RequestID requestID) const;

    mutable std::mutex mutex_;
    std::condition_variable jobWaiting_;
    std::deque<FrameJob> waiting_;
    std::set<ML::RequestID> running_;
    std::set<ML::RequestID> cancelledRunning_;
    bool closed_ = false;
};

} // namespace platform::media
