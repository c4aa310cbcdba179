#pragma once

#include "zelui/ui/UI_Cursor.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zelui::ui {

class UI_Node;
class UI_KeyboardEvent;

// The toolkit's application-wide services (singleton): timer ids, the modal
// state, and the keyboard filter nodes.
class UI_NodeManager {
public:
    // Null until a QApplication exists; created on first use.
    static UI_NodeManager* Get();
    // Forgets filter nodes and state (between tests); timer ids keep counting,
    // so an id is never handed out twice in a process.
    static void Destroy();

    UI_NodeManager(const UI_NodeManager&) = delete;
    UI_NodeManager& operator=(const UI_NodeManager&) = delete;
    ~UI_NodeManager();

    // A timer id no other caller in the process has been given; never 0.
    std::uint32_t GetUniqueTimerID();

    // True while a modal dialog, message box or popup menu is open.
    bool HasModalWindow() const;

    // Key presses and releases go to the filter nodes before shortcuts and the
    // focused control: the most recently added node first, until one consumes
    // the event. Adding a node twice keeps one entry, at its first place.
    void AddKeyboardEventFilterNode(UI_Node* node);
    void RemoveKeyboardEventFilterNode(UI_Node* node);

    // Runs the event through the filter nodes; returns whether one consumed it.
    bool FilterKeyboardEvent(const UI_KeyboardEvent& event);

    struct Impl;

private:
    friend class UI_ResourceManager;
    UI_NodeManager();

    std::vector<UI_Node*> filterNodes_; // in the order asked
    UI_CursorID currentCursor_ = kCursor_Default;
    std::unique_ptr<Impl> impl_;
};

} // namespace zelui::ui
