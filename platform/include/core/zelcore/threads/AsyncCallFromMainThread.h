#pragma once

#include <boost/function.hpp>

namespace zelcore::threads {

// Runs the call on the UI thread's Qt event loop after the current event
// returns, and at least delayMilliseconds later. Calls with no delay run in the
// order they were made, interleaved in order with KSL::StationUtils posts.
// Callable from any thread once a QCoreApplication exists (throws KSL::Exception
// before). An exception escaping the call is reported on stderr and dropped,
// since no caller is left to receive it.
void AsyncCallFromMainThread(boost::function<void()> call, int delayMilliseconds);

} // namespace zelcore::threads
