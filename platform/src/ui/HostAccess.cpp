#include "PlatformHost/HostAccess.h"
#include "UIF/TimeDisplayChoice.h"

#include "UIF/ShortcutManager.h"
#include "UIF/Workspace.h"
#include "toolkit/ControlImpl.h"
#include "views/ViewImpl.h"
#include "workspace/WorkspaceImpl.h"
#include "zelui/ui/UI_NodeManager.h"

namespace platform::ui {

QMainWindow* WorkspaceMainWindow() {
    UIF::Workspace* workspace = UIF::Workspace::Instance();
    return workspace ? &workspace->GetImpl().MainWindow() : nullptr;
}

QDockWidget* DockOf(const UIF::WorkspaceFrame& frame) {
    return frame.GetImpl().dock;
}

QWidget* WidgetOf(const UIF::ViewBase& view) {
    return WidgetOfView(view);
}

QWidget* WidgetOf(const zelui::controls::UI_ControlView& control) {
    return WidgetOfControl(control);
}

void ResetUIState() {
    UIF::Workspace::DestroyInstance();
    UIF::ShortcutManager::DestroyInstance();
    zelui::ui::UI_NodeManager::Destroy();
    UIF::ForgetTimeDisplayChoices();
}

} // namespace platform::ui
