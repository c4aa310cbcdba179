#include "PlatformTestSupport.h"

#include "KSL/StationUtils.h"
#include "MZ/Project.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

namespace platform_test {

void ResetHostState() {
    MZ::SetProject(nullptr);
    KSL::ResetMessaging();
    RunPostedWork();
}

void RunEventLoopFor(std::chrono::milliseconds duration) {
    QDeadlineTimer deadline(duration);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents,
                                        static_cast<int>(deadline.remainingTime()));
    }
}

void RunPostedWork() {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

} // namespace platform_test
