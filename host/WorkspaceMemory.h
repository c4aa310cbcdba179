#pragma once

#include <QPointer>

class QDockWidget;
class QMainWindow;
class QSettings;

namespace host {

// The width of the project panel at a first start.
inline constexpr int kProjectPanelWidthPx = 320;

// The host window as the person arranged it: the window's geometry, which
// panels are open, and where every dock is and how large. Saved to the host
// settings when the window closes and restored at the next start.
class WorkspaceMemory {
public:
    WorkspaceMemory(QMainWindow& window, QDockWidget& projectDock);

    void Save(QSettings& settings) const;
    // Reopens the plug-ins' panels that were open at the last save (those the
    // plug-ins still offer), then puts the window and every dock back. False,
    // changing nothing, when nothing was saved.
    bool Restore(QSettings& settings);
    // The layout of a first start: the window at its first size, the project
    // panel docked on the left, the plug-ins' panels docked at the bottom.
    void Reset();

private:
    QPointer<QMainWindow> window_;
    QPointer<QDockWidget> projectDock_;
};

} // namespace host
