#include "HostTestSupport.h"

#include "CommandActions.h"
#include "HSL/Ids.h"
#include "HSL/Messages.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Project.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/HotTimecodeControl.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDockWidget>
#include <QMainWindow>
#include <QProcessEnvironment>
#include <QSettings>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QTreeView>

namespace host_test {
namespace {

// The message classes a log copies and names; others are logged by id only.
template <typename... Messages> struct MessageClasses {
    static std::shared_ptr<const KSL::Message> CopyOf(const KSL::Message& message) {
        std::shared_ptr<const KSL::Message> copy;
        ((copy = !copy && message.As<Messages>()
                     ? std::make_shared<Messages>(*message.As<Messages>())
                     : copy),
         ...);
        return copy;
    }
    static std::string NameOf(KSL::MessageID id) {
        std::string name = "message " + std::to_string(id);
        ((name = Messages::ID() == id ? Messages::kTypeName : name), ...);
        return name;
    }
};

using KnownMessages = MessageClasses<
    MZ::BinSelectedMessage, MZ::MasterClipSelectedMessage, MZ::MasterClipClosedMessage,
    MZ::SequenceSelectedMessage, MZ::SequenceSettingsChangedMessage,
    MZ::ClosedCaptionsOpenedMessage, MZ::CaptioningTrackItemOpenedMessage,
    HSL::SourceClipSelectedMessage, MZ::CaptionCommitEditsMessage, MZ::CaptionSelectedMessage,
    UIF::HotTimecodeVideoTimeDisplayChangedMessage, UIF::HotTimecodeAudioTimeDisplayChangedMessage>;

} // namespace

host::PluginSet*& BuildPlugins() {
    static host::PluginSet* plugins = nullptr;
    return plugins;
}

MessageLog::MessageLog(const std::string& station) {
    KSL::StationUtils::AddListener(station, this);
}

std::vector<std::string> MessageLog::Names() const {
    std::vector<std::string> names;
    for (const Entry& entry : entries) {
        names.push_back(KnownMessages::NameOf(entry.id));
    }
    return names;
}

bool MessageLog::HandleMessage(const KSL::Message& message) {
    entries.push_back({message.GetMessageID(), KnownMessages::CopyOf(message)});
    return true;
}

std::string ScriptedFileChooser::Next() {
    ++questions;
    if (answers.empty()) {
        return {};
    }
    std::string answer = answers.front();
    answers.pop_front();
    return answer;
}

void HostWindowTest::SetUp() {
    // Each test starts from settings of its own: nothing remembered.
    UseSettingsFolder(temp.PathOf("settings"));
    messageBoxes = std::make_unique<UIF::MessageBoxRecorder>();
    StartHost();
}

void HostWindowTest::TearDown() {
    EndHost();
    messageBoxes.reset();
}

void HostWindowTest::StartNextHost() {
    EndHost();
    StartHost();
}

void HostWindowTest::StartHost() {
    // The build's captions module declares its shortcut context as it is made;
    // the UI reset after each test forgets it, so each test makes it anew, as
    // the host does once at its start.
    if (host::PluginSet* plugins = BuildPlugins(); plugins && !plugins->modules.empty()) {
        const zelcore::UTF16String path = plugins->modules.front()->GetModulePath();
        plugins->modules.clear();
        plugins->modules.emplace_back(HSL::Module::FindFactory(HSL::kCaptionsModuleID)(path));
    }
    window_ = std::make_unique<host::HostWindow>(
        chooser, [this](const std::string& problem) { reportedProblems.push_back(problem); });
    QMainWindow& mainWindow = window_->GetMainWindow();
    mainWindow.show();
    mainWindow.activateWindow();
    QCoreApplication::processEvents();
}

void HostWindowTest::EndHost() {
    window_.reset();
    platform::ui::ResetUIState();
    KSL::ResetMessaging();
    MZ::SetProject({});
}

void HostWindowTest::OpenDemo() {
    ASSERT_TRUE(
        window_->GetFileActions().OpenProjectFile(CORVALA_EXAMPLES_DIR "/demo-project.json"));
}

namespace {

// The first item named so among the items each bin lists through count and get.
template <typename Item>
KSL::InterfaceRef<Item> FindNamed(const BE::IProject& project, const std::string& name,
                                  std::size_t (BE::IBin::*count)() const,
                                  KSL::InterfaceRef<Item> (BE::IBin::*get)(std::size_t) const) {
    for (std::size_t b = 0; b < project.GetBinCount(); ++b) {
        const auto bin = project.GetBin(b);
        for (std::size_t i = 0; i < (bin.Get()->*count)(); ++i) {
            if (auto item = (bin.Get()->*get)(i); zelcore::ToUTF8(item->GetName()) == name) {
                return item;
            }
        }
    }
    ADD_FAILURE() << "the project has nothing named " << name;
    return {};
}

} // namespace

KSL::InterfaceRef<BE::IMasterClip> HostWindowTest::Clip(const std::string& name) const {
    return FindNamed(*window_->GetDocument().GetProject(), name, &BE::IBin::GetMasterClipCount,
                     &BE::IBin::GetMasterClip);
}

KSL::InterfaceRef<BE::ISequence> HostWindowTest::Sequence(const std::string& name) const {
    return FindNamed(*window_->GetDocument().GetProject(), name, &BE::IBin::GetSequenceCount,
                     &BE::IBin::GetSequence);
}

namespace {

QPoint RowCentre(host::ProjectPanel& panel, const BE::IProjectItem* item) {
    const QModelIndex row = panel.GetModel().IndexOf(item);
    EXPECT_TRUE(row.isValid()) << "the project panel shows no row for the item";
    panel.GetTreeView().scrollTo(row);
    return panel.GetTreeView().visualRect(row).center();
}

QAction* FindCommandAction(QMenu& menu, UIF::CommandID id) {
    host::RefreshCommandActions(menu);
    for (QAction* action : menu.actions()) {
        if (action->menu()) {
            if (QAction* found = FindCommandAction(*action->menu(), id)) {
                return found;
            }
        } else if (host::CommandOfAction(*action) == id) {
            return action;
        }
    }
    return nullptr;
}

} // namespace

void HostWindowTest::ClickItem(const BE::IProjectItem* item) {
    host::ProjectPanel& panel = window_->GetProjectPanel();
    QTest::mouseClick(panel.GetTreeView().viewport(), Qt::LeftButton, {}, RowCentre(panel, item));
}

void HostWindowTest::DoubleClickItem(const BE::IProjectItem* item) {
    host::ProjectPanel& panel = window_->GetProjectPanel();
    // A double-click's first press and release are a click of their own.
    const QPoint centre = RowCentre(panel, item);
    QTest::mouseClick(panel.GetTreeView().viewport(), Qt::LeftButton, {}, centre);
    QTest::mouseDClick(panel.GetTreeView().viewport(), Qt::LeftButton, {}, centre);
}

bool HostWindowTest::ChooseMenuCommand(QMenu& menu, UIF::CommandID id) {
    QAction* action = FindCommandAction(menu, id);
    if (!action || !action->isEnabled()) {
        return false;
    }
    action->trigger();
    return true;
}

QString HostWindowTest::MenuText(QMenu& menu, UIF::CommandID id) {
    QAction* action = FindCommandAction(menu, id);
    // Without the shortcut the menu shows after a tab.
    return action ? action->text().section(QLatin1Char('\t'), 0, 0) : QString();
}

QAction* HostWindowTest::WindowMenuEntry(const QString& title) {
    window_->GetWindowMenu().Refresh();
    for (QAction* action : window_->GetWindowMenu().actions()) {
        if (action->text() == title) {
            return action;
        }
    }
    return nullptr;
}

QDockWidget* HostWindowTest::DockTitled(const QString& title) {
    for (QDockWidget* dock : window_->GetMainWindow().findChildren<QDockWidget*>()) {
        if (dock->windowTitle() == title) {
            return dock;
        }
    }
    return nullptr;
}

void UseSettingsFolder(const std::string& folder) {
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, QString::fromStdString(folder));
}

void WhenModalLoopRuns(std::function<void()> action) {
    QTimer::singleShot(0, QCoreApplication::instance(), std::move(action));
}

bool WaitUntil(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(10'000);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(2);
    }
    return true;
}

ProcessResult RunCorvala(const QStringList& arguments,
                         const std::vector<std::pair<QString, QString>>& environment) {
    QProcess process;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    // The host's settings go to a folder of the tests', never the user's.
    static const QTemporaryDir configFolder;
    variables.insert(QStringLiteral("XDG_CONFIG_HOME"), configFolder.path());
    // So does the untitled project's journal; a test may choose its own folder.
    static const QTemporaryDir dataFolder;
    variables.insert(QStringLiteral("XDG_DATA_HOME"), dataFolder.path());
    for (const auto& [name, value] : environment) {
        variables.insert(name, value);
    }
    process.setProcessEnvironment(variables);
    process.start(QStringLiteral(CORVALA_EXECUTABLE), arguments);
    ProcessResult result;
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "corvala did not finish";
        return result;
    }
    result.exitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.standardOutput = QString::fromUtf8(process.readAllStandardOutput());
    result.standardError = QString::fromUtf8(process.readAllStandardError());
    return result;
}

} // namespace host_test
