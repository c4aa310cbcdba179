#pragma once

#include "UIF/Bitmap.h"
#include "UIF/Command.h"
#include "UIF/Geometry.h"
#include "zelcore/UTF16String.h"

#include <cstdint>
#include <memory>

namespace UIF {

class ViewBase;

// A button showing a decal that sends a command through the command chain of
// its view, as the menu or shortcut of that command would: the command's
// status is asked first and a disabled command is not sent. The pressed state
// is the owner's to set (a toggle's look); a click does not change it.
class PictureButton {
public:
    explicit PictureButton(ViewBase& parent);
    PictureButton(const PictureButton&) = delete;
    PictureButton& operator=(const PictureButton&) = delete;
    ~PictureButton();

    void SetDecal(DecalID decal);
    void SetCommandID(CommandID command);
    CommandID GetCommandID() const { return command_; }
    // The text is a localisation key or plain text; it also names the button
    // for assistive technology.
    void SetToolTip(const zelcore::UTF16String& text, std::uint32_t delayMilliseconds);

    void SetPressed(bool pressed);
    bool IsPressed() const;
    void SetEnabled(bool enabled);
    bool IsEnabled() const;

    Rect GetBounds() const;
    void SetBounds(const Rect& bounds);
    bool IsVisible() const;
    void Show();
    void Hide();
    // Takes the button off its view; it is inert afterwards.
    void Destroy();

    // The runtime's side of the control; opaque outside the runtime.
    struct Impl;
    Impl* GetImpl() const { return impl_.get(); }

private:
    void Clicked();

    ViewBase* parent_;
    CommandID command_ = 0;
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF
