#pragma once

#include "UIF/WindowClasses.h"

#include <QMenu>

#include <functional>
#include <vector>

namespace host {

// Whether the window's panel is open and shown.
bool IsWindowOpen(const UIF::WindowEntry& window);

// The Window menu: the host's own panels, then every window of the window
// classes registered in the workspace (UIF::GetWindowList), listed afresh each
// time the menu opens. Choosing a window opens its tab view (or brings it to
// the front); a check marks the windows whose panel is open. "Reset Layout"
// comes last.
class WindowMenu : public QMenu {
public:
    // hostPanelActions: the host's own panel toggles, listed first.
    WindowMenu(std::vector<QAction*> hostPanelActions, std::function<void()> resetLayout,
               QWidget* parent = nullptr);

    // Lists the windows as they are now; the menu does it as it opens.
    void Refresh();

private:
    std::vector<QAction*> hostPanelActions_;
    std::function<void()> resetLayout_;
};

} // namespace host
