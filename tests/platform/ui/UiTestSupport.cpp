#include "UiTestSupport.h"

#include "KSL/StationUtils.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/Command.h"
#include "UIF/Workspace.h"

#include <QApplication>
#include <QTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace platform_ui_test {

void ResetHostState() {
    QApplication::processEvents();
    platform::ui::ResetUIState();
    KSL::ResetMessaging();
    QApplication::processEvents();
}

QWidget& ShowWorkspace() {
    QMainWindow* window = platform::ui::WorkspaceMainWindow();
    window->resize(800, 600);
    window->show();
    window->activateWindow();
    QApplication::setActiveWindow(window);
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return *window;
}

void SendMouse(QWidget& widget, QEvent::Type type, QPoint position, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers modifiers) {
    QMouseEvent event(type, QPointF(position), QPointF(widget.mapToGlobal(position)), button, held,
                      modifiers);
    QApplication::sendEvent(&widget, &event);
}

void Drag(QWidget& widget, QPoint from, QPoint to, Qt::KeyboardModifiers modifiers) {
    SendMouse(widget, QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton, modifiers);
    constexpr int kSteps = 4;
    for (int step = 1; step <= kSteps; ++step) {
        const QPoint at = from + (to - from) * step / kSteps;
        SendMouse(widget, QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, modifiers);
    }
    SendMouse(widget, QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton, modifiers);
}

void WhenModalLoopRuns(std::function<void()> action) {
    QTimer::singleShot(0, std::move(action));
}

RecordingCreator::RecordingCreator(const zelcore::UTF16String& handlerName)
    : name(handlerName) {
    UIF::Workspace::Instance()->RegisterTabViewCreator(handlerName, this);
}

UIF::TabView* RecordingCreator::CreateTabView(UIF::WorkspaceFrame* frame) {
    ++creations;
    view = std::make_unique<RecordingTabView>(UIF::ApplicationCommander());
    view->Create(handlerID, u"$$$/Corvala/Test/PanelTitle=Test Panel", frame, true);
    return view.get();
}

} // namespace platform_ui_test
