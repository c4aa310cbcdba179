#pragma once

#include <functional>

namespace platform::core {

// The one queue of work for the UI thread: Qt queued calls on the
// QCoreApplication object, so the work runs in the application's thread after
// the current event returns, in posting order. Posting is thread-safe.
class MainThreadQueue {
public:
    // Runs the work at least delayMilliseconds later (0: on the next turn of
    // the loop). Throws KSL::Exception when no QCoreApplication exists.
    static void Post(std::function<void()> work, int delayMilliseconds = 0);

    // Work posted before this call, delayed or not, will not run.
    static void CancelPending();
};

} // namespace platform::core
