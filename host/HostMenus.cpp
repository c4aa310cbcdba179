// The host window's menus and the commands behind them.
#include "AboutBox.h"
#include "CommandActions.h"
#include "HostCommands.h"
#include "HostSettings.h"
#include "HostWindow.h"
#include "PreferencesDialog.h"
#include "QtText.h"
#include "RecentProjects.h"
#include "ShortcutSettings.h"
#include "ShortcutsDialog.h"
#include "TimeDisplayMenu.h"
#include "WindowMenu.h"

#include "UIF/MessageBox.h"
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <array>
#include <utility>

namespace host {
namespace {

QMenu* AddRefreshedMenu(QMenuBar& bar, const QString& title) {
    auto* menu = new QMenu(title, &bar);
    bar.addMenu(menu);
    // Command states are read as the menu opens; its submenus are refreshed with
    // it, since while a menu is open the chain answers as for a modal window.
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu] { RefreshCommandActions(*menu); });
    return menu;
}

} // namespace

void HostWindow::BuildMenus() {
    BuildFileMenu();
    BuildEditMenu();
    QMenuBar& bar = *mainWindow_->menuBar();
    viewMenu_ = new QMenu(Localized("$$$/Corvala/Host/Menu/View=&View"), &bar);
    viewMenu_->setObjectName(QStringLiteral("viewMenu"));
    timeDisplayMenu_ = new TimeDisplayMenu(viewMenu_);
    viewMenu_->addMenu(timeDisplayMenu_);
    viewMenu_->addSeparator();
    AddCommandAction(*viewMenu_, kHostCommand_PlaySelectedCaption,
                     Localized("$$$/Corvala/Host/Menu/PlayCaption=Play Selected Caption"));
    QObject::connect(viewMenu_, &QMenu::aboutToShow, viewMenu_,
                     [menu = viewMenu_.data()] { RefreshCommandActions(*menu); });
    bar.addMenu(viewMenu_);
    windowMenu_ = new WindowMenu(
        {projectDock_->toggleViewAction()}, [this] { ResetLayout(); }, &bar);
    bar.addMenu(windowMenu_);
    helpMenu_ = AddRefreshedMenu(bar, Localized("$$$/Corvala/Host/Menu/Help=&Help"));
    helpMenu_->setObjectName(QStringLiteral("helpMenu"));
    AddCommandAction(*helpMenu_, kHostCommand_About,
                     Localized("$$$/Corvala/Host/Menu/About=About Corvala"));
}

void HostWindow::BuildFileMenu() {
    fileMenu_ =
        AddRefreshedMenu(*mainWindow_->menuBar(), Localized("$$$/Corvala/Host/Menu/File=&File"));
    fileMenu_->setObjectName(QStringLiteral("fileMenu"));
    QMenu& menu = *fileMenu_;
    AddCommandAction(menu, kHostCommand_NewProject,
                     Localized("$$$/Corvala/Host/Menu/New=New Project"));
    AddCommandAction(menu, kHostCommand_OpenProject,
                     Localized("$$$/Corvala/Host/Menu/Open=Open Project..."));
    menu.addMenu(new RecentProjectsMenu(
        [this](const std::string& path) { fileActions_.OpenRecentProject(path); }, &menu));
    AddCommandAction(menu, kHostCommand_SaveProject, Localized("$$$/Corvala/Host/Menu/Save=Save"));
    AddCommandAction(menu, kHostCommand_SaveProjectAs,
                     Localized("$$$/Corvala/Host/Menu/SaveAs=Save As..."));
    menu.addSeparator();
    AddCommandAction(menu, kHostCommand_ImportMedia,
                     Localized("$$$/Corvala/Host/Menu/Import=Import Media..."));
    AddCommandAction(menu, kHostCommand_ImportCaptions,
                     Localized("$$$/Corvala/Host/Menu/ImportCaptions=Import Captions..."));
    AddCommandAction(menu, kHostCommand_ExportCaptions,
                     Localized("$$$/Corvala/Host/Menu/ExportCaptions=Export Captions..."));
    QMenu* streams = menu.addMenu(Localized("$$$/Corvala/Host/Menu/AddStream=Add Caption Stream"));
    streams->setObjectName(QStringLiteral("addCaptionStreamMenu"));
    for (const auto& [id, format] : kCaptionStreamCommands) {
        AddCommandAction(*streams, id, ToQString(zelcaptioning::GetFullStreamFormatLabel(format)));
    }
    AddCommandAction(menu, kHostCommand_CloseClip,
                     Localized("$$$/Corvala/Host/Menu/CloseClip=Close Clip"));
    AddCommandAction(menu, kHostCommand_NewSequence,
                     Localized("$$$/Corvala/Host/Menu/NewSequence=New Sequence"));
    menu.addSeparator();
    AddCommandAction(menu, kHostCommand_Quit, Localized("$$$/Corvala/Host/Menu/Quit=Quit"));
}

void HostWindow::BuildEditMenu() {
    editMenu_ =
        AddRefreshedMenu(*mainWindow_->menuBar(), Localized("$$$/Corvala/Host/Menu/Edit=&Edit"));
    editMenu_->setObjectName(QStringLiteral("editMenu"));
    QMenu& menu = *editMenu_;
    AddCommandAction(menu, UIF::kCommand_Undo, Localized("$$$/Corvala/Host/Menu/Undo=Undo"));
    AddCommandAction(menu, UIF::kCommand_Redo, Localized("$$$/Corvala/Host/Menu/Redo=Redo"));
    menu.addSeparator();
    AddCommandAction(menu, UIF::kCommand_Cut, Localized("$$$/Corvala/Host/Menu/Cut=Cut"));
    AddCommandAction(menu, UIF::kCommand_Copy, Localized("$$$/Corvala/Host/Menu/Copy=Copy"));
    AddCommandAction(menu, UIF::kCommand_Paste, Localized("$$$/Corvala/Host/Menu/Paste=Paste"));
    AddCommandAction(menu, UIF::kCommand_Delete, Localized("$$$/Corvala/Host/Menu/Delete=Delete"));
    AddCommandAction(menu, UIF::kCommand_SelectAll,
                     Localized("$$$/Corvala/Host/Menu/SelectAll=Select All"));
    menu.addSeparator();
    AddCommandAction(menu, kHostCommand_KeyboardShortcuts,
                     Localized("$$$/Corvala/Host/Menu/Shortcuts=Keyboard Shortcuts..."));
    AddCommandAction(menu, kHostCommand_Preferences,
                     Localized("$$$/Corvala/Host/Menu/Preferences=Preferences..."));
}

void HostWindow::AddCommands() {
    auto always = [] {
        return true;
    };
    commands_.Add(kHostCommand_NewProject, {always, [this] { fileActions_.NewProject(); }, {}});
    commands_.Add(kHostCommand_OpenProject, {always, [this] { fileActions_.OpenProject(); }, {}});
    commands_.Add(kHostCommand_SaveProject, {always, [this] { fileActions_.Save(); }, {}});
    commands_.Add(kHostCommand_SaveProjectAs, {always, [this] { fileActions_.SaveAs(); }, {}});
    commands_.Add(kHostCommand_ImportMedia, {always, [this] { clipActions_.ImportMedia(); }, {}});
    commands_.Add(kHostCommand_ImportCaptions,
                  {[this] { return captionFileActions_.CanImportCaptions(); },
                   [this] { captionFileActions_.ImportCaptions(); },
                   {}});
    commands_.Add(kHostCommand_ExportCaptions,
                  {[this] { return captionFileActions_.CanExportCaptions(); },
                   [this] { captionFileActions_.ExportCaptions(); },
                   {}});
    commands_.Add(
        kHostCommand_CloseClip,
        {[this] { return clipActions_.CanCloseClip(); }, [this] { clipActions_.CloseClip(); }, {}});
    commands_.Add(kHostCommand_Quit, {always, [this] { mainWindow_->close(); }, {}});
    commands_.Add(kHostCommand_About, {always, [this] { ShowAbout(); }, {}});
    commands_.Add(kHostCommand_NewSequence, {always, [this] { clipActions_.NewSequence(); }, {}});
    commands_.Add(UIF::kCommand_Delete, {[this] { return projectPanel_->CanDeleteSelected(); },
                                         [this] { projectPanel_->DeleteSelected(); },
                                         {}});
    commands_.Add(kHostCommand_KeyboardShortcuts, {always, [this] { ShowShortcutsDialog(); }, {}});
    commands_.Add(kHostCommand_Preferences, {always, [this] { ShowPreferencesDialog(); }, {}});
    commands_.Add(kHostCommand_PlaySelectedCaption,
                  {[this] { return sourceMonitor_->CanPlaySelectedCaption(); },
                   [this] { sourceMonitor_->PlaySelectedCaption(); },
                   {}});
    for (const auto& [id, format] : kCaptionStreamCommands) {
        commands_.Add(id,
                      {[this, format = format] { return clipActions_.CanAddCaptionStream(format); },
                       [this, format = format] { clipActions_.AddCaptionStream(format); },
                       {}});
    }
    auto history = [this]() -> BE::IUndoHistory& {
        return document_.GetProject()->GetUndoHistory();
    };
    commands_.Add(UIF::kCommand_Undo,
                  {[history] { return history().CanUndo(); }, [this] { document_.Undo(); },
                   [history] {
                       const QString step = ToQString(history().GetUndoStepName());
                       return step.isEmpty() || !history().CanUndo()
                                  ? Localized("$$$/Corvala/Host/Menu/Undo=Undo")
                                  : Localized("$$$/Corvala/Host/Menu/UndoStep=Undo %1").arg(step);
                   }});
    commands_.Add(UIF::kCommand_Redo,
                  {[history] { return history().CanRedo(); }, [this] { document_.Redo(); },
                   [history] {
                       const QString step = ToQString(history().GetRedoStepName());
                       return step.isEmpty() || !history().CanRedo()
                                  ? Localized("$$$/Corvala/Host/Menu/Redo=Redo")
                                  : Localized("$$$/Corvala/Host/Menu/RedoStep=Redo %1").arg(step);
                   }});
}

void HostWindow::ShowAbout() {
    UIF::MessageBoxW(ToUTF16(AboutText(loadedPlugins_)),
                     ToUTF16(Localized("$$$/Corvala/Host/Menu/About=About Corvala")),
                     UIF::MBFlag::kOK, UIF::MBIcon::kInformation, UIF::MBResult::kOK);
}

void HostWindow::ShowShortcutsDialog() {
    ShortcutsDialog dialog(mainWindow_);
    if (dialog.exec() == QDialog::Accepted) {
        SaveShortcutChanges(*OpenHostSettings());
    }
}

void HostWindow::ShowPreferencesDialog() {
    PreferencesDialog dialog(autosaver_.GetIntervalMinutes(), mainWindow_);
    if (dialog.exec() == QDialog::Accepted) {
        autosaver_.SetIntervalMinutes(dialog.GetAutosaveMinutes());
        StoreAutosaveMinutes(dialog.GetAutosaveMinutes());
    }
}

} // namespace host
