#include "zelcore/threads/AsyncCallFromMainThread.h"

#include "MainThreadQueue.h"

namespace zelcore::threads {

void AsyncCallFromMainThread(boost::function<void()> call, int delayMilliseconds) {
    platform::core::MainThreadQueue::Post([call = std::move(call)] { call(); }, delayMilliseconds);
}

} // namespace zelcore::threads
