#pragma once

#include "zelcore/UTF16String.h"
#include "zelcore/geom/Rect.h"
#include "zelui/controls/UI_ControlMessages.h"
#include "zelui/ui/UI_Node.h"

#include <boost/function.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace zelui::drawbot {
class Drawbot;
}
namespace zelui::ui {
class UI_CursorRequest;
class UI_KeyboardEvent;
class UI_MouseEvent;
} // namespace zelui::ui

namespace zelui::controls {

using UI_Rect = zelcore::geom::RectT<float>;

enum ControlAlignment : std::int32_t {
    kControlAlignment_Left = 0,
    kControlAlignment_Center = 1,
    kControlAlignment_Right = 2,
};

// Requests the host makes of a control (HandleControlRequest).
enum ControlRequest : std::int32_t {
    // Take the keyboard focus, ready for typing (the find command).
    kControlRequest_Activate = 3,
};

enum UI_FocusChange : std::int32_t {
    kFocusChange_Gained = 0,
    kFocusChange_Lost = 1,
};

// A control of the toolkit. Reference counted (start at 0, boost::intrusive_ptr),
// shown once a view holds it (UIF::ViewBase::AddControl). Bounds are in the
// view's client coordinates, in pixels.
//
// The hooks see the control's events before its standard behaviour does; a
// hook that returns true consumes the event.
class UI_ControlView : public ui::UI_Node {
public:
    using ChangedNotification = boost::function<void(const UI_ControlChangedMessage&)>;

    ~UI_ControlView() override;

    void AddRef() const { ++refCount_; }
    void Release() const;

    UI_Rect GetBounds() const;
    void SetBounds(const UI_Rect& bounds);
    bool IsVisible() const;
    void SetVisible(bool visible);
    bool IsDisabled() const;
    void SetDisabled(bool disabled);

    // The tip shows after the pointer rests on the control for the delay. It
    // is also the control's accessible name until one is set.
    void SetToolTip(const zelcore::UTF16String& text, std::uint32_t delayMilliseconds);
    zelcore::UTF16String GetToolTip() const;

    // What assistive technology calls the control (a localisation key or text).
    void SetAccessibleName(const zelcore::UTF16String& name);
    zelcore::UTF16String GetAccessibleName() const;

    void SetFocus();
    bool HasFocus() const;
    // A control drawn by UI_Draw takes the keyboard focus (Tab and Shift+Tab
    // in creation order, then its key events) only once asked to; standard
    // controls keep their own rule. A click never takes the focus, so
    // clicking such a control leaves a text edit in progress open.
    void SetTakesKeyboardFocus(bool takesFocus);
    // Asks for the control to be drawn again.
    void Invalidate();

    // Every notification is called, in the order added, after each change the
    // user makes.
    void NotifyWhenChanged(ChangedNotification notification);

    // Returns whether the control acted on the request.
    virtual bool HandleControlRequest(ControlRequest request);

    // Hooks.
    virtual void UI_Draw(drawbot::Drawbot& drawbot);
    virtual bool UI_DoMouseEvent(const ui::UI_MouseEvent& event);
    virtual bool UI_DoKeyboardEvent(const ui::UI_KeyboardEvent& event);
    // Return true after choosing a cursor with UI_ResourceManager::SetCursor;
    // false leaves the control's standard cursor.
    virtual bool UI_DoCursor(const ui::UI_CursorRequest& request);
    virtual void UI_FocusChanged(UI_FocusChange change);

    struct Impl;
    Impl& GetImpl() const { return *impl_; }

protected:
    // A control that draws itself with UI_Draw.
    UI_ControlView();
    // A toolkit control over a standard widget.
    explicit UI_ControlView(std::unique_ptr<Impl> impl);

    // Sends UI_ControlChangedMessage to the notifications.
    void NotifyChanged();

private:
    mutable std::int32_t refCount_ = 0;
    std::vector<ChangedNotification> changedNotifications_;
    std::unique_ptr<Impl> impl_;
};

inline void intrusive_ptr_add_ref(const UI_ControlView* control) {
    control->AddRef();
}
inline void intrusive_ptr_release(const UI_ControlView* control) {
    control->Release();
}

} // namespace zelui::controls
