#pragma once

#include "KSL/Message.h"

#include <cstdint>

namespace zelui::controls {

class UI_ControlView;

// A control's value was changed by the user (or its click happened).
class UI_ControlChangedMessage : public KSL::MessageOf<UI_ControlChangedMessage> {
public:
    static constexpr const char* kTypeName = "zelui::controls::UI_ControlChangedMessage";
    explicit UI_ControlChangedMessage(UI_ControlView* control)
        : control_(control) {}
    UI_ControlView* GetControl() const { return control_; }

private:
    UI_ControlView* control_;
};

// The stages of a change the user makes over time (a drag, an inline edit).
enum UI_InteractiveChange : std::int32_t {
    kInteractiveChange_Begin = 0,
    kInteractiveChange_Intermediate = 1,
    // The gesture ended; the value is the one the user chose.
    kInteractiveChange_Final = 2,
};

class UI_InteractiveControlChangedMessage
    : public KSL::MessageOf<UI_InteractiveControlChangedMessage> {
public:
    static constexpr const char* kTypeName = "zelui::controls::UI_InteractiveControlChangedMessage";
    UI_InteractiveControlChangedMessage(UI_ControlView* control, UI_InteractiveChange change)
        : control_(control)
        , change_(change) {}
    UI_ControlView* GetControl() const { return control_; }
    UI_InteractiveChange GetChangeMessage() const { return change_; }

private:
    UI_ControlView* control_;
    UI_InteractiveChange change_;
};

} // namespace zelui::controls
