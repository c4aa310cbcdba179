#include "HostWindow.h"

#include "AboutBox.h"
#include "CaptionFileDrop.h"
#include "HostCommands.h"
#include "HostSettings.h"
#include "PlatformHost/HostAccess.h"
#include "ProjectPanel.h"
#include "QtText.h"
#include "ShortcutSettings.h"
#include "SourceMonitor.h"
#include "UIF/ShortcutManager.h"
#include "UIF/WindowClasses.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <stdexcept>

namespace host {
namespace {

QMainWindow* RequireMainWindow() {
    QMainWindow* window = platform::ui::WorkspaceMainWindow();
    if (!window) {
        throw std::logic_error("the host window needs a QApplication");
    }
    return window;
}

} // namespace

HostWindow::HostWindow(FileChooser& chooser, ProblemReporter reportProblem)
    : mainWindow_(RequireMainWindow())
    , reportProblem_(std::move(reportProblem))
    , autosaver_(document_, reportProblem_)
    , projectPanel_(new ProjectPanel([this](KSL::InterfaceRef<BE::ISequence> sequence) {
        clipActions_.EditSequenceSettings(sequence);
    }))
    , sourceMonitor_(new SourceMonitor([this] { return document_.GetProject(); }))
    , fileActions_(document_, chooser, mainWindow_,
                   [this] { return !handlers_ || handlers_->AllowClose(); })
    , clipActions_(document_, *projectPanel_, chooser, mainWindow_, reportProblem_)
    , captionFileActions_(document_, *projectPanel_, chooser, mainWindow_, reportProblem_)
    , sequenceTimeDisplay_([this] { return document_.GetProject(); }) {
    new CaptionFileDrop(*projectPanel_, [this](const std::string& path,
                                               const KSL::InterfaceRef<BE::IMasterClip>& clip) {
        captionFileActions_.ImportCaptionFile(path, clip);
    });
    BuildDocks();
    AddCommands();
    UIF::ApplicationCommander()->AttachCommandHandler(&commands_);
    UIF::ShortcutManager::Instance()->RegisterCommandContext(&DeclareGlobalCommands);
    LoadShortcutChanges(*OpenHostSettings());
    BuildMenus();

    document_.SetObserver({[this] { OnProjectAboutToBeReplaced(); },
                           [this] { OnProjectReplaced(); },
                           [this] {
                               UpdateTitle();
                           }});
    OnProjectReplaced();
    UpdateTitle();

    mainWindow_->setWindowIcon(ApplicationIcon());
    mainWindow_->installEventFilter(this);
    mainWindow_->resize(1280, 800);
}

HostWindow::~HostWindow() {
    // The plug-ins' panels go while the workspace and the project are still there.
    handlers_.reset();
    if (UIF::Commander* application = UIF::ApplicationCommander()) {
        application->DetachCommandHandler(&commands_);
    }
    if (mainWindow_) {
        mainWindow_->removeEventFilter(this);
        for (QMenu* menu : {fileMenu_.data(), editMenu_.data(), viewMenu_.data(),
                            static_cast<QMenu*>(windowMenu_.data()), helpMenu_.data()}) {
            delete menu;
        }
        delete projectDock_;
        delete mainWindow_->takeCentralWidget();
    }
}

bool HostWindow::OpenPanel(const std::string& shortName) {
    const std::string windowTypeID = "window." + shortName;
    for (const UIF::WindowEntry& window : UIF::GetWindowList()) {
        if (window.windowTypeID == windowTypeID) {
            return UIF::OpenWindow(window.windowTypeID, window.windowID) != nullptr;
        }
    }
    return false;
}

KSL::InterfaceRef<BE::IMasterClip> HostWindow::FindClipNamed(const std::string& name) const {
    const KSL::InterfaceRef<BE::IProject>& project = document_.GetProject();
    for (std::size_t b = 0; b < project->GetBinCount(); ++b) {
        const KSL::InterfaceRef<BE::IBin> bin = project->GetBin(b);
        for (std::size_t c = 0; c < bin->GetMasterClipCount(); ++c) {
            const KSL::InterfaceRef<BE::IMasterClip> clip = bin->GetMasterClip(c);
            if (zelcore::ToUTF8(clip->GetName()) == name) {
                return clip;
            }
        }
    }
    return {};
}

bool HostWindow::SelectClipNamed(const std::string& name) {
    const KSL::InterfaceRef<BE::IMasterClip> clip = FindClipNamed(name);
    return clip && projectPanel_->SelectItem(clip.Get());
}

bool HostWindow::RestoreWorkspace() {
    return workspaceMemory_->Restore(*OpenHostSettings());
}

void HostWindow::ResetLayout() {
    workspaceMemory_->Reset();
}

void HostWindow::SetLoadedPlugins(std::vector<std::string> libraryPaths) {
    loadedPlugins_ = std::move(libraryPaths);
}

bool HostWindow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == mainWindow_ && event->type() == QEvent::Close) {
        if (!fileActions_.ConfirmClose()) {
            event->ignore();
            return true;
        }
        workspaceMemory_->Save(*OpenHostSettings());
    }
    // A key a plug-in's panel left unused reaches the main window: in a panel the transport
    // keys drive the source monitor, as they do in the monitor itself.
    if (watched == mainWindow_ && event->type() == QEvent::KeyPress && FocusIsInPluginPanel() &&
        sourceMonitor_->HandleTransportKey(static_cast<const QKeyEvent&>(*event))) {
        return true;
    }
    return QObject::eventFilter(watched, event);
}

bool HostWindow::FocusIsInPluginPanel() const {
    for (QWidget* widget = QApplication::focusWidget(); widget; widget = widget->parentWidget()) {
        if (auto* dock = qobject_cast<QDockWidget*>(widget)) {
            return dock != projectDock_;
        }
    }
    return false;
}

void HostWindow::BuildDocks() {
    projectDock_ =
        new QDockWidget(Localized("$$$/Corvala/Host/Project/Title=Project"), mainWindow_);
    projectDock_->setObjectName(QStringLiteral("projectDock"));
    projectDock_->setWidget(projectPanel_);
    mainWindow_->addDockWidget(Qt::LeftDockWidgetArea, projectDock_);
    projectDock_->show();
    mainWindow_->resizeDocks({projectDock_}, {kProjectPanelWidthPx}, Qt::Horizontal);
    mainWindow_->setCentralWidget(sourceMonitor_);
    workspaceMemory_ = std::make_unique<WorkspaceMemory>(*mainWindow_, *projectDock_);
}

void HostWindow::OnProjectAboutToBeReplaced() {
    handlers_.reset();
}

void HostWindow::OnProjectReplaced() {
    projectPanel_->SetProject(document_.GetProject());
    handlers_ = std::make_unique<ProjectHandlers>(document_.GetProject());
    for (const std::string& failure : handlers_->GetFailures()) {
        reportProblem_(Localized("$$$/Corvala/Host/Plugins/HandlerFailed=A plug-in's panel "
                                 "could not be made for the project: %1")
                           .arg(QString::fromStdString(failure))
                           .toStdString());
    }
}

void HostWindow::UpdateTitle() {
    const std::string& path = document_.GetFilePath();
    const QString name = path.empty() ? Localized("$$$/Corvala/Host/File/Untitled=Untitled")
                                      : QFileInfo(QString::fromStdString(path)).fileName();
    mainWindow_->setWindowTitle(
        QStringLiteral("%1[*] — %2").arg(name, Localized("$$$/Corvala/Host/AppName=Corvala")));
    mainWindow_->setWindowModified(document_.IsModified());
}

} // namespace host
