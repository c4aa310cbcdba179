#include "MainThreadQueue.h"

#include "KSL/Exception.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <exception>

namespace platform::core {
namespace {

// Bumped by CancelPending; queued work carries the value it was posted under.
std::atomic<unsigned> gGeneration{0};

void RunReportingExceptions(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::exception& e) {
        std::fprintf(stderr, "corvala: posted call failed: %s\n", e.what());
    } catch (...) {
        std::fprintf(stderr, "corvala: posted call failed with a non-standard exception\n");
    }
}

} // namespace

void MainThreadQueue::Post(std::function<void()> work, int delayMilliseconds) {
    QCoreApplication* app = QCoreApplication::instance();
    if (!app) {
        throw KSL::Exception("posting to the UI thread needs a QCoreApplication");
    }
    auto guarded = [generation = gGeneration.load(), work = std::move(work)] {
        if (generation == gGeneration.load()) {
            RunReportingExceptions(work);
        }
    };
    if (delayMilliseconds <= 0) {
        QMetaObject::invokeMethod(app, std::move(guarded), Qt::QueuedConnection);
        return;
    }
    // A timer must be started in the thread it fires in, so the delay starts
    // on the UI thread.
    QMetaObject::invokeMethod(
        app,
        [app, delayMilliseconds, guarded = std::move(guarded)] {
            QTimer::singleShot(delayMilliseconds, app, guarded);
        },
        Qt::QueuedConnection);
}

void MainThreadQueue::CancelPending() {
    ++gGeneration;
}

} // namespace platform::core
