#pragma once

#include "UIF/TabView.h"
#include "zelcore/UTF16String.h"

#include <QMouseEvent>
#include <QPoint>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

namespace platform_ui_test {

// Forgets every host-wide object and queued message (after each test).
void ResetHostState();

// Shows the workspace's main window and makes it the active window, so that
// focus and key events behave as on screen.
QWidget& ShowWorkspace();

// Sends a mouse event as the window system would, buttons held as given.
void SendMouse(QWidget& widget, QEvent::Type type, QPoint position, Qt::MouseButton button,
               Qt::MouseButtons held, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
// Press, move in steps to the end, release.
void Drag(QWidget& widget, QPoint from, QPoint to,
          Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// Runs the action on the next turn of the event loop, when a modal loop
// started meanwhile is running.
void WhenModalLoopRuns(std::function<void()> action);

// A tab view that records its hooks.
class RecordingTabView : public UIF::TabView {
public:
    explicit RecordingTabView(UIF::Commander* superCommander)
        : UIF::TabView(superCommander) {}

    std::vector<std::string> log;
    std::int32_t minimumStackedHeight = 0;

    std::int32_t GetMinimumStackedHeight() const override { return minimumStackedHeight; }

protected:
    void OnCreate() override { log.push_back("create"); }
    void DestroySelf() override {
        log.push_back("destroySelf");
        UIF::TabView::DestroySelf();
    }
};

// A handler that creates RecordingTabViews in the frames it is given.
class RecordingCreator : public UIF::TabViewCreator {
public:
    explicit RecordingCreator(const zelcore::UTF16String& handlerName);

    UIF::TabView* CreateTabView(UIF::WorkspaceFrame* frame) override;
    bool ShouldHideWhenClosed() const override { return hideWhenClosed; }
    bool ShouldSaveStateWhenDestroyed() const override { return keepFramePlace; }

    zelcore::UTF16String name;
    // What the views are created with; handlers may be named apart from their id.
    zelcore::UTF16String handlerID = name;
    std::unique_ptr<RecordingTabView> view;
    int creations = 0;
    bool hideWhenClosed = false;
    bool keepFramePlace = true;
};

} // namespace platform_ui_test
