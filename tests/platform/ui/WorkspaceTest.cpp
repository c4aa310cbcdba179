#include "UIF/Workspace.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/WindowClasses.h"
#include "UiTestSupport.h"

#include <QApplication>
#include <QCloseEvent>
#include <QTabBar>
#include <QtTest/QTest>
#include <gtest/gtest.h>

namespace platform_ui_test {
namespace {

class WorkspaceTest : public testing::Test {
protected:
    WorkspaceTest() { ShowWorkspace(); }
    UIF::Workspace& workspace = *UIF::Workspace::Instance();
};

TEST_F(WorkspaceTest, TabViewIsCreatedOnceInADockedFrame) {
    RecordingCreator captions(u"captions");
    UIF::TabView* view = workspace.CreateOrReanimateTabView(u"captions", {});
    ASSERT_EQ(view, captions.view.get());
    EXPECT_TRUE(view->IsCreated());
    EXPECT_TRUE(view->IsVisible());
    EXPECT_TRUE(view->IsFrontMost());
    EXPECT_EQ(captions.view->log, std::vector<std::string>{"create"});

    UIF::WorkspaceFrame* frame = view->GetFrame();
    ASSERT_NE(frame, nullptr);
    EXPECT_EQ(frame->GetTitle(), u"Test Panel");
    EXPECT_EQ(frame->GetPlacement(), UIF::kFramePlacement_Docked);
    EXPECT_EQ(frame->GetDockSide(), UIF::kDockSide_Bottom);

    EXPECT_EQ(workspace.CreateOrReanimateTabView(u"captions", {}), view);
    EXPECT_EQ(captions.creations, 1);
    EXPECT_EQ(workspace.CreateOrReanimateTabView(u"unknown", {}), nullptr);
}

TEST_F(WorkspaceTest, FramesDockUndockAndStackAsTabs) {
    RecordingCreator first(u"first");
    RecordingCreator second(u"second");
    workspace.CreateOrReanimateTabView(u"first", {{"dockSide", u"left"}});
    workspace.CreateOrReanimateTabView(u"second", {{"dockSide", u"floating"}});
    UIF::WorkspaceFrame& firstFrame = *first.view->GetFrame();
    UIF::WorkspaceFrame& secondFrame = *second.view->GetFrame();
    EXPECT_EQ(firstFrame.GetDockSide(), UIF::kDockSide_Left);
    EXPECT_EQ(secondFrame.GetPlacement(), UIF::kFramePlacement_Floating);

    secondFrame.Dock(UIF::kDockSide_Left);
    EXPECT_EQ(secondFrame.GetPlacement(), UIF::kFramePlacement_Docked);
    EXPECT_TRUE(first.view->GetIsStacked()) << "two panels share the left column";

    secondFrame.StackAsTabWith(firstFrame);
    QApplication::processEvents();
    EXPECT_EQ(firstFrame.GetTabGroup().size(), 2u);
    EXPECT_FALSE(first.view->GetIsStacked()) << "tabs do not share their height";
    EXPECT_NE(first.view->IsFrontMost(), second.view->IsFrontMost());

    UIF::TabView* behind = first.view->IsFrontMost() ? second.view.get() : first.view.get();
    behind->BringToFront(true, true);
    QApplication::processEvents();
    EXPECT_TRUE(behind->IsFrontMost());
    EXPECT_TRUE(behind->HasFocus());

    firstFrame.Undock();
    EXPECT_EQ(firstFrame.GetPlacement(), UIF::kFramePlacement_Floating);
    EXPECT_EQ(secondFrame.GetTabGroup().size(), 1u);
}

TEST_F(WorkspaceTest, ClosingTheFrameDestroysTheViewAndReanimatesItInPlace) {
    RecordingCreator captions(u"captions");
    workspace.CreateOrReanimateTabView(u"captions", {{"dockSide", u"right"}});
    QDockWidget* dock = platform::ui::DockOf(*captions.view->GetFrame());
    ASSERT_NE(dock, nullptr);

    EXPECT_TRUE(dock->close() || dock->isHidden());
    EXPECT_EQ(captions.view->log, (std::vector<std::string>{"create", "destroySelf"}));
    EXPECT_FALSE(captions.view->IsCreated());
    EXPECT_TRUE(dock->isHidden());

    UIF::TabView* reanimated = workspace.CreateOrReanimateTabView(u"captions", {});
    ASSERT_NE(reanimated, nullptr);
    EXPECT_EQ(captions.creations, 2);
    EXPECT_EQ(reanimated->GetFrame()->GetDockSide(), UIF::kDockSide_Right);
    EXPECT_EQ(workspace.GetFrames().size(), 1u);
}

TEST_F(WorkspaceTest, CreatorsChooseToHideOrToForgetTheFrame) {
    RecordingCreator hidden(u"hidden");
    hidden.hideWhenClosed = true;
    workspace.CreateOrReanimateTabView(u"hidden", {});
    hidden.view->GetFrame()->Close();
    EXPECT_TRUE(hidden.view->IsCreated());
    EXPECT_FALSE(hidden.view->IsVisible());
    hidden.view->Show();
    EXPECT_TRUE(hidden.view->IsVisible());

    RecordingCreator forgotten(u"forgotten");
    forgotten.keepFramePlace = false;
    workspace.CreateOrReanimateTabView(u"forgotten", {});
    forgotten.view->GetFrame()->Close();
    EXPECT_EQ(workspace.FindFrame(u"forgotten"), nullptr);
    EXPECT_EQ(forgotten.view->GetFrame(), nullptr);
}

TEST_F(WorkspaceTest, WindowMenuListsRegisteredWindowsAndOpensThem) {
    RecordingCreator captions(u"captions.handler");
    UIF::AddWindowClass(UIF::kCaptionsWindowTypeID, u"captions.handler",
                        UIF::kWindowClassType_Panel);
    UIF::AddWindow(UIF::kCaptionsWindowTypeID, UIF::kDefaultWindowID,
                   u"$$$/Corvala/Test/CaptionsWindowTitle=Captions", UIF::kDefaultWindowContextID);
    UIF::AddWindow("window.unregistered", 1, u"Nowhere", 0);

    const std::vector<UIF::WindowEntry> windows = UIF::GetWindowList();
    ASSERT_EQ(windows.size(), 1u);
    EXPECT_EQ(windows[0].title, u"Captions");
    EXPECT_EQ(windows[0].handlerID, u"captions.handler");

    UIF::TabView* view = UIF::OpenWindow(UIF::kCaptionsWindowTypeID, UIF::kDefaultWindowID);
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(view->IsFrontMost());

    UIF::RemoveWindowClass(UIF::kCaptionsWindowTypeID);
    EXPECT_TRUE(UIF::GetWindowList().empty());
    EXPECT_TRUE(view->IsCreated()) << "open tab views stay open";
    EXPECT_EQ(UIF::OpenWindow(UIF::kCaptionsWindowTypeID, UIF::kDefaultWindowID), nullptr);
}

TEST_F(WorkspaceTest, StackedDimensionsFollowTheViewsMinimum) {
    RecordingCreator captions(u"captions");
    workspace.CreateOrReanimateTabView(u"captions", {});
    captions.view->minimumStackedHeight = 137;
    captions.view->UpdateStackedDimensions(true);
    EXPECT_GE(captions.view->GetBounds().Height(), 137);
}

TEST_F(WorkspaceTest, DestroyedCreatorIsForgotten) {
    {
        RecordingCreator transient(u"transient");
        workspace.CreateOrReanimateTabView(u"transient", {});
    }
    EXPECT_EQ(workspace.CreateOrReanimateTabView(u"transient", {}), nullptr);
}

} // namespace
} // namespace platform_ui_test
