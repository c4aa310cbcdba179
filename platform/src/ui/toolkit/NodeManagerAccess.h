#pragma once

namespace zelui::ui {
class UI_NodeManager;
}

namespace platform::ui {

// The node manager when one exists, without creating it.
zelui::ui::UI_NodeManager* ExistingNodeManager();

} // namespace platform::ui
