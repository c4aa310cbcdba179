#include "Application.h"

#include "BE/IMasterClip.h"
#include "ExitCodes.h"
#include "FileChooser.h"
#include "HostWindow.h"
#include "ML/FrameService.h"
#include "PlatformHost/HostAccess.h"
#include "PluginFolders.h"
#include "PluginLoader.h"
#include "PreferencesDialog.h"
#include "ProjectGestures.h"
#include "QtText.h"
#include "RecentProjects.h"
#include "RecoveryPrompt.h"
#include "Screenshot.h"
#include "UIF/MessageBox.h"
#include "UIF/WindowClasses.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelcore/UTF16String.h"

#include <QApplication>
#include <QMainWindow>
#include <QTimer>

#include <cstdlib>
#include <iostream>

namespace host {
namespace {

void PrintProblem(const std::string& problem) {
    std::cerr << "corvala: " << problem << '\n';
}

void ShowProblem(const std::string& problem) {
    UIF::MessageBoxW(zelcore::ToUTF16(problem),
                     ToUTF16(Localized("$$$/Corvala/Host/AppName=Corvala")), UIF::MBFlag::kOK,
                     UIF::MBIcon::kWarning, UIF::MBResult::kOK);
}

std::string DescribePluginFailures(const std::vector<PluginFailure>& failures) {
    std::string text = Localized("$$$/Corvala/Host/Plugins/Failed=These plug-ins were not "
                                 "loaded; the host runs without them:")
                           .toStdString();
    for (const PluginFailure& failure : failures) {
        text += "\n\n" + failure.libraryPath + ": " + failure.problem;
    }
    return text;
}

std::string AvailablePanels() {
    std::string names;
    for (const UIF::WindowEntry& window : UIF::GetWindowList()) {
        const std::string prefix = "window.";
        if (window.windowTypeID.starts_with(prefix)) {
            names += (names.empty() ? "" : ", ") + window.windowTypeID.substr(prefix.size());
        }
    }
    return names.empty() ? "none" : names;
}

// Everything the host builds, torn down in the reverse order of need: the
// window (with the plug-ins' handlers and panels) before the workspace, the
// workspace before the plug-ins' modules, and the media service last.
class HostRun {
public:
    explicit HostRun(bool interactive)
        : interactive_(interactive) {
        ML::FrameService::Start();
        plugins_ = LoadPlugins(PluginFolders(QCoreApplication::applicationDirPath().toStdString(),
                                             std::getenv(kPluginPathVariable)));
        for (const PluginFailure& failure : plugins_.failures) {
            PrintProblem("plug-in " + failure.libraryPath + " was not loaded: " + failure.problem);
        }
        window_ = std::make_unique<HostWindow>(chooser_, [this](const std::string& problem) {
            PrintProblem(problem);
            if (interactive_) {
                ShowProblem(problem);
            }
        });
        window_->SetLoadedPlugins(plugins_.loadedLibraryPaths);
    }
    ~HostRun() {
        window_.reset();
        platform::ui::ResetUIState();
        plugins_.modules.clear();
        ML::FrameService::Shutdown();
    }

    HostWindow& Window() { return *window_; }
    const PluginSet& Plugins() const { return plugins_; }

private:
    bool interactive_;
    DialogFileChooser chooser_;
    PluginSet plugins_;
    std::unique_ptr<HostWindow> window_;
};

} // namespace

std::string DemoProjectPath() {
    return std::string(CORVALA_EXAMPLES_DIR) + "/demo-project.json";
}

int OpenStartProject(HostWindow& window, const LaunchOptions& options) {
    ProjectDocument& document = window.GetDocument();
    switch (options.projectSource) {
    case LaunchOptions::ProjectSource::kNewProject:
        // Journalled from the start, recovering an untitled journal left behind.
        document.NewProject();
        return kExit_Success;
    case LaunchOptions::ProjectSource::kDemoProject:
        // A copy: the shipped example is never written, nor a journal beside it.
        if (const auto error = document.OpenCopy(DemoProjectPath())) {
            PrintProblem("cannot open the project " + DemoProjectPath() + ": " + error->ToString());
            return kExit_Failure;
        }
        return kExit_Success;
    case LaunchOptions::ProjectSource::kProjectFile:
        if (const auto error = document.Open(options.projectPath)) {
            PrintProblem("cannot open the project " + options.projectPath + ": " +
                         error->ToString());
            return kExit_Failure;
        }
        NoteRecentProject(options.projectPath);
        return kExit_Success;
    }
    return kExit_Failure;
}

int RunApplication(const LaunchOptions& options) {
    const bool interactive = options.screenshotPath.empty();
    HostRun run(interactive);
    HostWindow& window = run.Window();
    window.GetDocument().SetJournalPolicy(
        MakeJournalPolicy(options.recovery, interactive, [interactive](const std::string& problem) {
            PrintProblem(problem);
            if (interactive) {
                ShowProblem(problem);
            }
        }));
    if (const int code = OpenStartProject(window, options); code != kExit_Success) {
        return code;
    }
    if (!options.clipName.empty() && !window.SelectClipNamed(options.clipName)) {
        PrintProblem("the project has no master clip named '" + options.clipName + "'");
        return kExit_Failure;
    }
    if (interactive) {
        // A screenshot shows the first-start layout, whatever this user arranged.
        window.RestoreWorkspace();
    }
    if (!options.panelName.empty() && !window.OpenPanel(options.panelName)) {
        PrintProblem("no panel named '" + options.panelName +
                     "' is registered (panels: " + AvailablePanels() + ")");
        return kExit_Failure;
    }
    if (options.streamFormat != zelcaptioning::kStreamFormat_None) {
        const auto stream =
            window.FindClipNamed(options.clipName)->FindCaptioningStream(options.streamFormat);
        if (!stream) {
            PrintProblem(
                "the clip '" + options.clipName + "' has no " +
                zelcore::ToUTF8(zelcaptioning::GetFullStreamFormatLabel(options.streamFormat)) +
                " stream");
            return kExit_Failure;
        }
        ProjectGestures::AnnounceStreamOpened(stream);
    }
    if (!options.saveAsPath.empty()) {
        if (const auto error = window.GetDocument().SaveAs(options.saveAsPath)) {
            PrintProblem("cannot save the project as " + options.saveAsPath + ": " +
                         error->ToString());
            return kExit_Failure;
        }
    }
    if (!interactive) {
        if (const auto problem = SaveScreenshot(window, options.screenshotPath)) {
            PrintProblem(*problem);
            return kExit_Failure;
        }
        std::cout << "corvala: wrote " << options.screenshotPath << '\n';
        return kExit_Success;
    }
    window.GetAutosaver().SetIntervalMinutes(StoredAutosaveMinutes());
    window.GetMainWindow().show();
    if (!run.Plugins().failures.empty()) {
        const std::string text = DescribePluginFailures(run.Plugins().failures);
        QTimer::singleShot(0, &window.GetMainWindow(), [text] { ShowProblem(text); });
    }
    return QApplication::exec();
}

} // namespace host
