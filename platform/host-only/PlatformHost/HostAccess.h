#pragma once

// The host application's and the tests' way to the Qt side of the SDK's
// objects: to put the workspace's main window on screen, dock and show panels,
// offer the keyboard-shortcuts list, and drive widgets with real events.

#include <QAbstractTableModel>
#include <QByteArray>
#include <QDockWidget>
#include <QMainWindow>
#include <QWidget>

#include <memory>

namespace UIF {
class ColorPickerControl;
class HotTimecodeControl;
class PictureButton;
class ScrollBar;
class ViewBase;
class WorkspaceFrame;
} // namespace UIF
namespace zelui::controls {
class UI_ControlView;
}

namespace platform::ui {

// The workspace's main window (creating the workspace); null without a QApplication.
QMainWindow* WorkspaceMainWindow();
QDockWidget* DockOf(const UIF::WorkspaceFrame& frame);

// Each object's window; null once the window is gone.
QWidget* WidgetOf(const UIF::ViewBase& view);
QWidget* WidgetOf(const zelui::controls::UI_ControlView& control);
QWidget* WidgetOf(const UIF::ScrollBar& scrollBar);
QWidget* WidgetOf(const UIF::PictureButton& button);
QWidget* WidgetOf(const UIF::ColorPickerControl& picker);
QWidget* WidgetOf(const UIF::HotTimecodeControl& control);

// The keyboard-shortcuts list as a table (context, command, description,
// key); the key column is editable and binds the typed key.
std::unique_ptr<QAbstractTableModel> CreateShortcutListModel();

// The extent a panel's dock takes when it first shows docked.
inline constexpr int kFirstPanelExtentPx = 260;

// The places, sizes and visibility of the workspace's docks (QMainWindow::saveState).
QByteArray SaveWorkspaceLayout();
// Puts the docks back as saved; false when the layout is empty or unreadable.
// A panel that opens later in this run takes the place saved for it.
bool RestoreWorkspaceLayout(const QByteArray& layout);
// Docks every panel at the bottom of the main window, side by side, in the
// extent of a first opening: the layout of a first start.
void ResetPanelDocks();

// Forgets the workspace, the node manager and the shortcut manager, for the
// host's shutdown and between tests.
void ResetUIState();

} // namespace platform::ui
