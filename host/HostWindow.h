#pragma once

#include "Autosaver.h"
#include "CaptionFileActions.h"
#include "ClipActions.h"
#include "HostCommandTable.h"
#include "ProjectDocument.h"
#include "ProjectFileActions.h"
#include "ProjectHandlers.h"
#include "ProjectPanel.h"
#include "SequenceTimeDisplayLink.h"
#include "SourceMonitor.h"
#include "TimeDisplayMenu.h"
#include "WindowMenu.h"
#include "WorkspaceMemory.h"

#include <QMainWindow>
#include <QMenu>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QDockWidget;

namespace host {

class FileChooser;

// The host's main window, built into the workspace's main window: the project
// panel docked on the left, the source monitor in the middle, the menus, and
// the plug-ins' handlers of the open project. Panels of plug-ins dock, undock
// and stack as the workspace lets them. Closing the window asks about unsaved
// changes first, then keeps the workspace's layout for the next start. The
// person's shortcut changes are bound as the window is made.
class HostWindow : public QObject {
public:
    using ProblemReporter = std::function<void(const std::string& problem)>;

    // reportProblem hears problems nobody asked for (a plug-in's handler that
    // could not be made); the chooser answers the file dialogs.
    HostWindow(FileChooser& chooser, ProblemReporter reportProblem);
    ~HostWindow() override;

    QMainWindow& GetMainWindow() const { return *mainWindow_; }
    ProjectDocument& GetDocument() { return document_; }
    Autosaver& GetAutosaver() { return autosaver_; }
    ProjectPanel& GetProjectPanel() const { return *projectPanel_; }
    SourceMonitor& GetSourceMonitor() const { return *sourceMonitor_; }
    ProjectFileActions& GetFileActions() { return fileActions_; }
    ClipActions& GetClipActions() { return clipActions_; }
    CaptionFileActions& GetCaptionFileActions() { return captionFileActions_; }
    const ProjectHandlers& GetHandlers() const { return *handlers_; }

    QMenu& GetFileMenu() const { return *fileMenu_; }
    QMenu& GetEditMenu() const { return *editMenu_; }
    TimeDisplayMenu& GetTimeDisplayMenu() const { return *timeDisplayMenu_; }
    WindowMenu& GetWindowMenu() const { return *windowMenu_; }

    // Opens the panel whose window class is "window.NAME" (e.g. "captions");
    // false when no such panel is registered or it made no view.
    bool OpenPanel(const std::string& shortName);
    // The first master clip of that name, or none.
    KSL::InterfaceRef<BE::IMasterClip> FindClipNamed(const std::string& name) const;
    // Selects the first master clip of that name, as a click in the project panel does.
    bool SelectClipNamed(const std::string& name);

    // Puts the window and its panels back as they were when the window last
    // closed (the host settings keep them); false when nothing was kept.
    bool RestoreWorkspace();
    // Window > Reset Layout: the window and the docks as at a first start.
    void ResetLayout();

    // The plug-in libraries loaded at start, for Help > About.
    void SetLoadedPlugins(std::vector<std::string> libraryPaths);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildDocks();
    void BuildMenus();
    void BuildFileMenu();
    void BuildEditMenu();
    void AddCommands();
    void OnProjectAboutToBeReplaced();
    void OnProjectReplaced();
    void UpdateTitle();
    void ShowShortcutsDialog();
    void ShowPreferencesDialog();
    // Whether the keyboard focus is in a panel a plug-in docked (not the project panel).
    bool FocusIsInPluginPanel() const;
    void ShowAbout();

    QPointer<QMainWindow> mainWindow_;
    ProblemReporter reportProblem_;
    ProjectDocument document_;
    Autosaver autosaver_;
    QPointer<QDockWidget> projectDock_;
    QPointer<ProjectPanel> projectPanel_;
    QPointer<SourceMonitor> sourceMonitor_;
    ProjectFileActions fileActions_;
    ClipActions clipActions_;
    CaptionFileActions captionFileActions_;
    HostCommandTable commands_;
    SequenceTimeDisplayLink sequenceTimeDisplay_;
    std::unique_ptr<ProjectHandlers> handlers_;
    std::unique_ptr<WorkspaceMemory> workspaceMemory_;
    QPointer<QMenu> fileMenu_;
    QPointer<QMenu> editMenu_;
    QPointer<TimeDisplayMenu> timeDisplayMenu_;
    QPointer<QMenu> viewMenu_;
    QPointer<WindowMenu> windowMenu_;
    QPointer<QMenu> helpMenu_;
    std::vector<std::string> loadedPlugins_;
};

} // namespace host
