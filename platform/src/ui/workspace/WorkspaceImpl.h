#pragma once

#include "UIF/Command.h"
#include "UIF/Workspace.h"
#include "zelcore/UTF16String.h"

#include <QDockWidget>
#include <QMainWindow>
#include <QPointer>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace platform::ui {

// A workspace frame's dock: the close button closes the frame through the
// workspace's rules instead of only hiding it. Made to float by its button or
// by a double-click on its title, it opens as a framed window offset from
// where it was docked, so that it is seen to have come loose.
class FrameDock : public QDockWidget {
public:
    explicit FrameDock(UIF::WorkspaceFrame& frame);

    // The dock's place and size were set by a restored layout: its first
    // showing keeps them.
    void MarkPlaced() { hasBeenShownDocked_ = true; }

protected:
    void closeEvent(QCloseEvent* event) override;
    // The first time it shows docked, the dock takes a usable extent, so that
    // a panel whose content asks for little space still opens large enough
    // to work in; later the person's own sizing stands.
    void showEvent(QShowEvent* event) override;
    void moveEvent(QMoveEvent* event) override;

private:
    void OnFloatingChanged(bool floating);
    void RememberDockedPlace();

    UIF::WorkspaceFrame& frame_;
    bool hasBeenShownDocked_ = false;
    // Where the dock last was while docked, in its main window's coordinates.
    QPoint dockedTopLeft_;
};

struct WindowClass {
    zelcore::UTF16String handlerID;
    std::int32_t windowClassType = 0;
    struct Window {
        zelcore::UTF16String title;
        std::uint32_t windowContextID = 0;
    };
    std::map<std::uint32_t, Window> windows;
};

Qt::DockWidgetArea AreaOfDockSide(UIF::DockSide side);

} // namespace platform::ui

namespace UIF {

struct WorkspaceFrame::Impl {
    QPointer<platform::ui::FrameDock> dock;
};

struct Workspace::Impl {
    Impl();
    ~Impl();

    QMainWindow& MainWindow() { return *mainWindow; }
    Qt::DockWidgetArea AreaOf(const WorkspaceFrame& frame) const;
    // Hides the frame, or takes it out of the workspace when its creator does
    // not keep frames' places.
    void CloseFrame(WorkspaceFrame& frame);

    std::unique_ptr<QMainWindow> mainWindow;
    Commander applicationCommander{nullptr};
    std::map<zelcore::UTF16String, TabViewCreator*> creators;
    std::vector<std::unique_ptr<WorkspaceFrame>> frames;
    std::map<std::string, platform::ui::WindowClass> windowClasses;
    std::unique_ptr<WorkspaceWindow> window;
};

} // namespace UIF
