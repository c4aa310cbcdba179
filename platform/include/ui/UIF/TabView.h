#pragma once

#include "UIF/ViewBase.h"
#include "zelcore/UTF16String.h"

#include <cstdint>

namespace UIF {

class WorkspaceFrame;

// Flags of TabView::Destroy.
enum TabViewDestroyFlags : std::uint32_t {
    kTabViewDestroy_KeepFrame = 0,
    // Also take the view's frame out of the workspace (or hide it, when its
    // creator keeps the frame's place for the next creation).
    kTabViewDestroy_CloseFrame = 1,
};

// A dockable panel of the host window. Constructed without a window place;
// Create puts it into a workspace frame and calls OnCreate, where the view
// builds its controls. The workspace creates tab views on demand through
// their TabViewCreator (Workspace::CreateOrReanimateTabView).
class TabView : public ViewBase {
public:
    explicit TabView(Commander* superCommander);
    ~TabView() override;

    // Shows the view in the frame under the localised title and runs OnCreate.
    // With showNow false the frame stays hidden until Show.
    void Create(const zelcore::UTF16String& handlerID, const zelcore::UTF16String& title,
                WorkspaceFrame* frame, bool showNow);
    bool IsCreated() const { return isCreated_; }

    WorkspaceFrame* GetFrame() const { return frame_; }
    const zelcore::UTF16String& GetHandlerID() const { return handlerID_; }

    // Visible means created and the frame open (possibly behind a sibling
    // tab); Show opens the frame, Hide closes it without destroying the view.
    bool IsVisible() const override;
    void Show() override;
    void Hide() override;

    // Front-most: shown, and the current tab of its tab group.
    bool IsFrontMost() const;
    // Makes the view the current tab of its group; raiseWindow also raises and
    // activates the window that holds it, takeFocus gives the view the focus.
    void BringToFront(bool raiseWindow, bool takeFocus);

    // Runs DestroySelf (when created) and then handles the frame as the flags say.
    virtual void Destroy(std::uint32_t flags);

    // A view stacked with other panels in a column of the workspace shares its
    // height with them: the workspace keeps it at least GetMinimumStackedHeight high.
    bool GetIsStacked() const;
    virtual std::int32_t GetMinimumStackedHeight() const { return 0; }
    // Re-reads GetMinimumStackedHeight; relayoutNow applies it before returning
    // instead of on the next turn of the event loop.
    void UpdateStackedDimensions(bool relayoutNow);

    void EnableDoubleBuffering(bool enable) { SetDoubleBuffering(enable, true); }

protected:
    // Called by Create once the view is in its frame.
    virtual void OnCreate() {}
    // Releases what OnCreate built; overrides end by calling TabView::DestroySelf,
    // which takes the view out of its frame.
    virtual void DestroySelf();

private:
    friend class WorkspaceFrame;
    zelcore::UTF16String handlerID_;
    WorkspaceFrame* frame_ = nullptr;
    bool isCreated_ = false;
};

// Makes the tab views of one kind of panel. Registered with the workspace
// under a handler name; unregistered when destroyed. A creator that is also a
// CommandHandler receives the commands its views do not handle.
class TabViewCreator {
public:
    TabViewCreator() = default;
    TabViewCreator(const TabViewCreator&) = delete;
    TabViewCreator& operator=(const TabViewCreator&) = delete;
    virtual ~TabViewCreator();

    // Builds the view and calls its Create with the frame; returns it, or null
    // when it could not. The creator owns the view.
    virtual TabView* CreateTabView(WorkspaceFrame* frame) = 0;

    // What closing the frame does: destroy the view, or only hide the frame.
    virtual bool ShouldDestroyWhenClosed() const { return true; }
    virtual bool ShouldHideWhenClosed() const { return false; }
    // Keep the frame's place in the workspace (docked side, tab group) when
    // the view is destroyed, so the next creation opens it there.
    virtual bool ShouldSaveStateWhenDestroyed() const { return true; }
};

} // namespace UIF
