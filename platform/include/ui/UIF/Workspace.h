#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace zelui::drawbot {
class Drawbot;
}

namespace UIF {

class TabView;
class TabViewCreator;

// Named values handed to the workspace with a request. Keys the workspace reads:
//   "dockSide": "left", "right", "top", "bottom" (default) or "floating",
//               where a new frame opens.
using PropertyList = std::map<std::string, zelcore::UTF16String>;

enum DockSide : std::int32_t {
    kDockSide_Left = 0,
    kDockSide_Right = 1,
    kDockSide_Top = 2,
    kDockSide_Bottom = 3,
};

enum FramePlacement : std::int32_t {
    kFramePlacement_Docked = 0,
    kFramePlacement_Floating = 1,
};

// The dockable window around one tab view: docked at a side of the main
// window, floating on its own, or stacked as a tab with other frames.
class WorkspaceFrame {
public:
    WorkspaceFrame(const WorkspaceFrame&) = delete;
    WorkspaceFrame& operator=(const WorkspaceFrame&) = delete;
    ~WorkspaceFrame();

    TabView* GetTabView() const { return tabView_; }
    const zelcore::UTF16String& GetHandlerName() const { return handlerName_; }
    zelcore::UTF16String GetTitle() const;

    FramePlacement GetPlacement() const;
    DockSide GetDockSide() const;
    void Dock(DockSide side);
    void Undock();
    // Puts this frame as a tab into the tab group of the other frame.
    void StackAsTabWith(WorkspaceFrame& other);
    // The frames that share a tab group with this one, itself included, in tab order.
    std::vector<WorkspaceFrame*> GetTabGroup() const;

    bool IsOpen() const;
    // Closes the frame as the user's close button does (see TabViewCreator).
    void Close();

    struct Impl;
    Impl& GetImpl() const { return *impl_; }

private:
    friend class Workspace;
    friend class TabView;
    WorkspaceFrame(zelcore::UTF16String handlerName, TabViewCreator* creator);

    zelcore::UTF16String handlerName_;
    TabViewCreator* creator_;
    TabView* tabView_ = nullptr;
    std::unique_ptr<Impl> impl_;
};

// The host's main window, as a source of a drawing surface for measuring text.
class WorkspaceWindow {
public:
    virtual ~WorkspaceWindow() = default;
    // A measuring surface at the window's resolution, owned by the window.
    virtual zelui::drawbot::Drawbot* GetDrawbot() = 0;
};

// The host's main window and the dockable panels in it (singleton).
class Workspace {
public:
    // Null until a QApplication exists; created on first use.
    static Workspace* Instance();
    // Closes every frame and forgets the workspace, for the host's shutdown
    // and between tests.
    static void DestroyInstance();

    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    ~Workspace();

    void RegisterTabViewCreator(const zelcore::UTF16String& handlerName, TabViewCreator* creator);
    void UnregisterTabViewCreator(TabViewCreator* creator);

    // The tab view of the handler: the open one, or one re-created in the
    // frame it had, or one created in a new frame (placed by properties).
    // Null when no creator is registered under the name or it made no view.
    TabView* CreateOrReanimateTabView(const zelcore::UTF16String& handlerName,
                                      const PropertyList& properties);

    std::vector<WorkspaceFrame*> GetFrames() const;
    WorkspaceFrame* FindFrame(const zelcore::UTF16String& handlerName) const;

    WorkspaceWindow* GetPtr();

    struct Impl;
    Impl& GetImpl() const { return *impl_; }

private:
    friend class TabViewCreator;
    Workspace();
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF
