#pragma once

namespace zelui::ui {

class UI_KeyboardEvent;

// An element of the toolkit's tree that can see keyboard events before the
// focused control does, once added to the node manager as a keyboard event
// filter node. A node removes itself from the manager when destroyed.
class UI_Node {
public:
    UI_Node() = default;
    UI_Node(const UI_Node&) = delete;
    UI_Node& operator=(const UI_Node&) = delete;
    virtual ~UI_Node();

    // Return true to consume the event: neither later filters, shortcuts nor
    // the focused control see it.
    virtual bool UI_DoPreKeyboardEvent(const UI_KeyboardEvent& event);
};

} // namespace zelui::ui
