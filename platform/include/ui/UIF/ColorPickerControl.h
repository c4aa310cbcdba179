#pragma once

#include "KSL/ImmutableString.h"
#include "KSL/Message.h"
#include "UIF/Geometry.h"
#include "zelcore/UTF16String.h"
#include "zelui/ui/UI_Color.h"

#include <memory>

namespace UIF {

class ViewBase;

// The user chose a colour in the picker (a preset, or the eyedropper's last colour).
class ColorPickerControlChangedMessage : public KSL::MessageOf<ColorPickerControlChangedMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ColorPickerControlChangedMessage";
    explicit ColorPickerControlChangedMessage(const zelui::ui::UI_Color& color)
        : color_(color) {}
    const zelui::ui::UI_Color& GetColor() const { return color_; }

private:
    zelui::ui::UI_Color color_;
};

// The user clicked the current-colour swatch (owners open a colour dialog).
class ColorPickerSwatchClickedMessage : public KSL::MessageOf<ColorPickerSwatchClickedMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ColorPickerSwatchClickedMessage";
};

// The user dragged out of the swatch: until the end message the picker's
// colour follows the screen under the pointer.
class ColorPickerSwatchStartEyedropperModeMessage
    : public KSL::MessageOf<ColorPickerSwatchStartEyedropperModeMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ColorPickerSwatchStartEyedropperModeMessage";
};

class ColorPickerSwatchEndEyedropperModeMessage
    : public KSL::MessageOf<ColorPickerSwatchEndEyedropperModeMessage> {
public:
    static constexpr const char* kTypeName = "UIF::ColorPickerSwatchEndEyedropperModeMessage";
};

// A colour row: the current colour's swatch followed by preset colours.
// Clicking a preset makes it the colour and broadcasts the change; clicking
// the swatch broadcasts a swatch click; dragging from the swatch samples the
// window under the pointer (eyedropper), broadcasting start, the change on
// release, then end. SetColor does not broadcast.
class ColorPickerControl {
public:
    explicit ColorPickerControl(ViewBase& parent);
    ColorPickerControl(const ColorPickerControl&) = delete;
    ColorPickerControl& operator=(const ColorPickerControl&) = delete;
    ~ColorPickerControl();

    const KSL::StationID& GetStationID() const { return stationID_; }

    zelui::ui::UI_Color GetColor() const;
    void SetColor(const zelui::ui::UI_Color& color);

    // What assistive technology calls the row (a localisation key or text).
    void SetAccessibleName(const zelcore::UTF16String& name);

    void SetEnabled(bool enabled);
    bool IsEnabled() const;
    Rect GetBounds() const;
    void SetBounds(const Rect& bounds);
    bool IsVisible() const;
    void Show();
    void Hide();
    void Destroy();

    // The runtime's side of the control; opaque outside the runtime.
    struct Impl;
    Impl* GetImpl() const { return impl_.get(); }

private:
    KSL::StationID stationID_;
    std::unique_ptr<Impl> impl_;
};

} // namespace UIF
