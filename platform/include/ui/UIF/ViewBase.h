#pragma once

#include "UIF/Command.h"
#include "UIF/Geometry.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zelui::controls {
class UI_ControlView;
}
namespace zelui::ui {
class UI_MouseEvent;
}

namespace UIF {

class DC;
class SubView;

using TimerID = std::uint32_t;

// What a drag over a view that wants drag-and-drop events is doing.
enum DragAndDropPhase : std::int32_t {
    kDragAndDrop_Enter = 0,
    kDragAndDrop_Move = 1,
    kDragAndDrop_Leave = 2,
    kDragAndDrop_Drop = 3,
};

struct DragAndDropEvent {
    DragAndDropPhase phase = kDragAndDrop_Enter;
    std::int32_t x = 0; // in the view's client coordinates
    std::int32_t y = 0;
    zelcore::UTF16String text;              // the dragged text, if any
    std::vector<zelcore::UTF16String> urls; // dragged files and links
};

// A rectangle of the host window that draws itself and takes input. Views are
// commanders: a command sent while a view (or a control in it) has the focus
// starts its travel at that view. Frames are in the parent view's client
// coordinates; a view's own client rectangle starts at (0, 0).
//
// Every hook is called on the UI thread from the view's window events.
class ViewBase : public Commander {
public:
    ~ViewBase() override;

    // The view that holds this one, or null for a tab view.
    virtual ViewBase* GetParent() const;

    Rect GetBounds() const;
    void SetBounds(const Rect& bounds);
    Rect GetClientRect() const;

    virtual bool IsVisible() const;
    virtual void Show();
    virtual void Hide();

    // Asks for the view to be drawn again on the next turn of the event loop;
    // requests made before then are merged.
    void Invalidate();
    void Invalidate(const Rect& area);

    void SetFocus();
    // True when the view itself or a control inside it has the keyboard focus.
    bool HasFocus() const;

    // What assistive technology calls the view (a localisation key or text).
    void SetAccessibleName(const zelcore::UTF16String& name);
    // Names the item the view draws as its focused one (a list's selected
    // row); assistive technology announces it as the focus. Empty: none.
    void SetAccessibleFocusItem(const zelcore::UTF16String& name);

    // Makes the sub-view a child of this view and calls its AttachedToView.
    // The sub-view stays owned by the caller; destroying it detaches it.
    void AddSubView(SubView& child);

    // Puts the control into this view; it shows at its bounds.
    void AddControl(zelui::controls::UI_ControlView& control);

    // Starts (or restarts with the new interval) a repeating timer that calls
    // TimerFired with the id until RemoveTimer. Ids come from
    // zelui::ui::UI_NodeManager::GetUniqueTimerID.
    void SetTimer(TimerID id, std::uint32_t intervalMilliseconds);
    void RemoveTimer(TimerID id);
    bool HasTimer(TimerID id) const;

    // The runtime's side of the view (its window); opaque outside the runtime.
    struct Impl;
    Impl& GetImpl() const { return *impl_; }

protected:
    explicit ViewBase(Commander* superCommander);

    // Hooks.
    virtual void BoundsChanged() {}
    // Paints the area; the DC is clipped to it.
    virtual void Draw(DC& dc, const Rect& updateArea);
    // Mouse positions are in the view's client coordinates. Return whether the
    // event was handled.
    virtual bool MouseDown(const zelui::ui::UI_MouseEvent& event);
    virtual bool MouseUp(const zelui::ui::UI_MouseEvent& event);
    // The event's wheel delta counts notches, positive away from the user.
    virtual bool MouseWheel(const zelui::ui::UI_MouseEvent& event);
    // keyCode is the character typed (positive) or the negated virtual-key
    // number of a non-character key (-38 up, -40 down, -36 home, -35 end,
    // -33 page up, -34 page down, ...); modifiers are zelui::ui::KeyModifier bits.
    virtual bool KeyDown(std::int32_t keyCode, std::uint32_t modifiers);
    virtual void TimerFired(TimerID id);
    virtual bool DragAndDrop(const DragAndDropEvent& event);
    virtual void FocusChanged() {}

    // Double buffering keeps the last drawing and repaints from it when the
    // window is merely exposed; Draw runs again only after Invalidate. With
    // eraseBackground the buffer is filled with kColor_WindowBackground before
    // each Draw; without it Draw must cover every pixel of its area.
    void SetDoubleBuffering(bool enable, bool eraseBackground);
    void SetWantsDragAndDropEvents(bool wants);

private:
    friend class ViewEvents;
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF
