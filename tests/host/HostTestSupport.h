#pragma once

#include "FileChooser.h"
#include "HostWindow.h"
#include "KSL/Listener.h"
#include "KSL/Message.h"
#include "PluginLoader.h"
#include "UIF/Command.h"
#include "UIF/MessageBox.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace host_test {

// The plug-ins of the build's plug-in folder, loaded once by the tests' main.
host::PluginSet*& BuildPlugins();

// Records every message broadcast or posted on one station while it lives.
class MessageLog : public KSL::Listener {
public:
    explicit MessageLog(const std::string& station);

    struct Entry {
        KSL::MessageID id;
        // Copies of the messages this log knows, for their payloads.
        std::shared_ptr<const KSL::Message> message;
    };

    // The entries of message class T, in arrival order.
    template <typename T> std::vector<const T*> Of() const {
        std::vector<const T*> found;
        for (const Entry& entry : entries) {
            if (entry.id == T::ID()) {
                found.push_back(static_cast<const T*>(entry.message.get()));
            }
        }
        return found;
    }
    // Type names of the messages, in arrival order, for readable failures.
    std::vector<std::string> Names() const;

    std::vector<Entry> entries;

protected:
    bool HandleMessage(const KSL::Message& message) override;
};

// Answers the host's file dialogs with queued paths (empty: the user cancels).
class ScriptedFileChooser : public host::FileChooser {
public:
    std::string ChooseProjectToOpen(QWidget*) override { return Next(); }
    std::string ChooseProjectSavePath(QWidget*, const std::string&) override { return Next(); }
    std::string ChooseMediaToImport(QWidget*) override { return Next(); }
    std::string ChooseCaptionFileToImport(QWidget*) override { return Next(); }
    std::string ChooseCaptionExportPath(
        QWidget*, const std::string&,
        const std::vector<captionformats::CaptionFileFormat>& offered) override {
        offeredFormats = offered;
        return Next();
    }

    std::deque<std::string> answers;
    // The formats the last export dialog offered.
    std::vector<captionformats::CaptionFileFormat> offeredFormats;
    int questions = 0;

private:
    std::string Next();
};

// A fresh folder under the system's temporary folder, removed with the object.
class TempFolder {
public:
    std::string PathOf(const std::string& fileName) const {
        return folder_.filePath(QString::fromStdString(fileName)).toStdString();
    }

private:
    QTemporaryDir folder_;
};

// A host window on the shown workspace, with file dialogs answered by the
// chooser, message boxes recorded, and every host-wide object reset afterwards.
class HostWindowTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Opens the example project; the test fails when it cannot.
    void OpenDemo();
    // The demo's objects by name.
    KSL::InterfaceRef<BE::IMasterClip> Clip(const std::string& name) const;
    KSL::InterfaceRef<BE::ISequence> Sequence(const std::string& name) const;

    host::HostWindow& Window() { return *window_; }
    // Ends this host window as corvala ends and starts a new one, as the next
    // run of corvala does; the settings stay.
    void StartNextHost();

    // Mouse gestures on the project panel's row of the item, as a user makes them.
    void ClickItem(const BE::IProjectItem* item);
    void DoubleClickItem(const BE::IProjectItem* item);
    // Chooses the command's item of the menu (or of its submenus) after the menu
    // refreshed its states as it does when it opens; false when the item is
    // missing or disabled.
    bool ChooseMenuCommand(QMenu& menu, UIF::CommandID id);
    // The text the command's menu item shows once the menu refreshed.
    QString MenuText(QMenu& menu, UIF::CommandID id);
    // The Window menu's item of that title once the menu refreshed; null when absent.
    QAction* WindowMenuEntry(const QString& title);
    // The main window's dock of that title; null when there is none.
    QDockWidget* DockTitled(const QString& title);

    ScriptedFileChooser chooser;
    std::vector<std::string> reportedProblems;
    std::unique_ptr<UIF::MessageBoxRecorder> messageBoxes;
    TempFolder temp;

private:
    void StartHost();
    void EndHost();

    std::unique_ptr<host::HostWindow> window_;
};

// The name of the demo's clip with captions, and of its other clip and sequence.
inline constexpr const char* kCaptionedClip = "Interview - Mara";
inline constexpr const char* kPlainClip = "B-Roll - Harbour at Dawn";
inline constexpr const char* kDemoSequence = "Harbour Story - Edit 1";

// Where the host keeps its settings from now on (QSettings::setPath): tests
// never read or write the user's own.
void UseSettingsFolder(const std::string& folder);

// Runs the action on the next turn of the event loop, where a modal loop
// started meanwhile (a dialog's exec, a context menu) is running.
void WhenModalLoopRuns(std::function<void()> action);

// Runs the event loop until the condition holds (10 s at most); returns it.
bool WaitUntil(const std::function<bool()>& condition);

// The corvala executable run to its end (60 s at most), with extra environment.
struct ProcessResult {
    int exitCode = -1;
    QString standardOutput;
    QString standardError;
};
ProcessResult RunCorvala(const QStringList& arguments,
                         const std::vector<std::pair<QString, QString>>& environment = {});

} // namespace host_test
