// The workspace kept between runs: window geometry, docks and open panels,
// Reset Layout, and floating panels.
#include "HostTestSupport.h"
#include "PlatformHost/HostAccess.h"

#include <QApplication>
#include <QDockWidget>
#include <QMainWindow>

#include <gtest/gtest.h>

namespace {

using host_test::HostWindowTest;

const QString kCaptionsTitle = QStringLiteral("Captions");
const QString kProjectTitle = QStringLiteral("Project");

class WorkspaceMemoryTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
    }

    QDockWidget& OpenCaptionsPanel() {
        EXPECT_TRUE(Window().OpenPanel("captions"));
        QDockWidget* dock = DockTitled(kCaptionsTitle);
        EXPECT_NE(dock, nullptr);
        return *dock;
    }

    // Closes the window as the person does, which keeps its layout, and starts
    // the next run's window from the kept layout, before it is shown as corvala does.
    void CloseAndRestart() {
        ASSERT_TRUE(Window().GetMainWindow().close());
        StartNextHost();
        OpenDemo();
        Window().GetMainWindow().hide();
        ASSERT_TRUE(Window().RestoreWorkspace());
        Window().GetMainWindow().show();
        QCoreApplication::processEvents();
    }

    QMainWindow& Main() { return Window().GetMainWindow(); }
};

TEST_F(WorkspaceMemoryTest, NothingIsRestoredBeforeAWindowWasEverClosed) {
    EXPECT_FALSE(Window().RestoreWorkspace());
    EXPECT_EQ(DockTitled(kCaptionsTitle), nullptr);
}

TEST_F(WorkspaceMemoryTest, TheNextRunHasTheWindowTheOpenPanelsAndTheirDocksAsLeft) {
    QDockWidget& captions = OpenCaptionsPanel();
    Main().addDockWidget(Qt::RightDockWidgetArea, &captions);
    Main().resize(1100, 760);
    QCoreApplication::processEvents();
    Main().resizeDocks({&captions}, {420}, Qt::Horizontal);
    DockTitled(kProjectTitle)->close();
    QCoreApplication::processEvents();
    const int captionsWidth = captions.width();

    CloseAndRestart();

    QDockWidget* restored = DockTitled(kCaptionsTitle);
    ASSERT_NE(restored, nullptr) << "the captions panel was open and opens again";
    EXPECT_TRUE(restored->isVisible());
    EXPECT_EQ(Main().dockWidgetArea(restored), Qt::RightDockWidgetArea);
    EXPECT_NEAR(restored->width(), captionsWidth, 8);
    EXPECT_EQ(Main().size(), QSize(1100, 760));
    EXPECT_FALSE(DockTitled(kProjectTitle)->isVisible()) << "the project panel was closed";
}

TEST_F(WorkspaceMemoryTest, AClosedPanelStaysClosedAndOpensLaterWhereItWas) {
    QDockWidget& captions = OpenCaptionsPanel();
    Main().addDockWidget(Qt::TopDockWidgetArea, &captions);
    QCoreApplication::processEvents();
    captions.close();
    QCoreApplication::processEvents();

    CloseAndRestart();
    QDockWidget* notReopened = DockTitled(kCaptionsTitle);
    EXPECT_TRUE(notReopened == nullptr || !notReopened->isVisible());

    QDockWidget& reopened = OpenCaptionsPanel();
    QCoreApplication::processEvents();
    EXPECT_TRUE(reopened.isVisible());
    EXPECT_EQ(Main().dockWidgetArea(&reopened), Qt::TopDockWidgetArea);
}

TEST_F(WorkspaceMemoryTest, ResetLayoutDocksEveryPanelAsAtAFirstStart) {
    QDockWidget& captions = OpenCaptionsPanel();
    captions.setFloating(true);
    QDockWidget& project = *DockTitled(kProjectTitle);
    Main().addDockWidget(Qt::RightDockWidgetArea, &project);
    project.close();
    Main().resize(900, 600);
    QCoreApplication::processEvents();

    QAction* reset = Window().GetWindowMenu().findChild<QAction*>("resetLayoutAction");
    ASSERT_NE(reset, nullptr);
    reset->trigger();
    QCoreApplication::processEvents();

    EXPECT_FALSE(captions.isFloating());
    EXPECT_EQ(Main().dockWidgetArea(&captions), Qt::BottomDockWidgetArea);
    EXPECT_NEAR(captions.height(), platform::ui::kFirstPanelExtentPx, 8);
    EXPECT_TRUE(project.isVisible());
    EXPECT_EQ(Main().dockWidgetArea(&project), Qt::LeftDockWidgetArea);
    EXPECT_EQ(Main().size(), QSize(1280, 800));
}

TEST_F(WorkspaceMemoryTest, AFloatedPanelOpensFramedAndOffsetFromWhereItWasDocked) {
    QDockWidget& captions = OpenCaptionsPanel();
    QCoreApplication::processEvents();
    const QPoint docked = captions.mapToGlobal(QPoint(0, 0));

    // As the dock's float button does.
    captions.setFloating(true);
    ASSERT_TRUE(host_test::WaitUntil([&] { return captions.pos() != docked; }));
    QCoreApplication::processEvents();

    EXPECT_TRUE(captions.isFloating());
    EXPECT_TRUE(captions.isVisible());
    EXPECT_EQ(captions.pos(), docked + QPoint(40, 40));
    EXPECT_FALSE(captions.windowFlags().testFlag(Qt::FramelessWindowHint));
}

} // namespace
