// What the host keeps in its settings besides the layout: recent projects,
// the file dialogs' folders, shortcut changes, and the example project that
// --demo opens without ever writing it.
#include "Application.h"
#include "FileChooser.h"
#include "HostSettings.h"
#include "HostTestSupport.h"
#include "RecentProjects.h"
#include "ShortcutSettings.h"
#include "UIF/ShortcutManager.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>

#include <gtest/gtest.h>

#include <filesystem>

namespace {

using host_test::HostWindowTest;

QByteArray FileBytes(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

class RememberedSettingsTest : public HostWindowTest {
protected:
    host::RecentProjectsMenu& OpenRecentMenu() {
        auto* menu = Window().GetFileMenu().findChild<host::RecentProjectsMenu*>("openRecentMenu");
        EXPECT_NE(menu, nullptr);
        menu->Refresh();
        return *menu;
    }
    // The path of the recent-project entries, in menu order.
    QStringList RecentEntries() {
        QStringList tips;
        for (QAction* action : OpenRecentMenu().actions()) {
            if (!action->toolTip().isEmpty() && action->toolTip().contains(QDir::separator())) {
                tips << action->toolTip();
            }
        }
        return tips;
    }
};

TEST_F(RememberedSettingsTest, OpenRecentListsProjectsOpenedAndSavedNewestFirstAcrossRuns) {
    EXPECT_TRUE(RecentEntries().isEmpty());
    OpenDemo();
    const std::string saved = temp.PathOf("story.json");
    chooser.answers.push_back(saved);
    ASSERT_TRUE(Window().GetFileActions().SaveAs());

    StartNextHost();
    const QString demo = QFileInfo(CORVALA_EXAMPLES_DIR "/demo-project.json").absoluteFilePath();
    ASSERT_EQ(RecentEntries(), (QStringList{QString::fromStdString(saved), demo}));

    // Choosing an entry opens it and moves it to the top.
    OpenRecentMenu().actions().at(1)->trigger();
    EXPECT_EQ(QFileInfo(QString::fromStdString(Window().GetDocument().GetFilePath())),
              QFileInfo(demo));
    EXPECT_EQ(RecentEntries().front(), demo);
}

TEST_F(RememberedSettingsTest, ARecentProjectThatIsGoneIsReportedAndLeavesTheList) {
    const std::string gone = temp.PathOf("gone.json");
    host::NoteRecentProject(gone);
    ASSERT_EQ(RecentEntries().size(), 1);

    OpenRecentMenu().actions().at(0)->trigger();
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    EXPECT_NE(zelcore::ToUTF8(messageBoxes->GetRecords()[0].text).find("gone.json"),
              std::string::npos);
    EXPECT_TRUE(RecentEntries().isEmpty());
    EXPECT_TRUE(Window().GetDocument().GetFilePath().empty());
}

TEST_F(RememberedSettingsTest, TheListKeepsTheNewestTenAndClearEmptiesIt) {
    for (int index = 0; index < host::kMaxRecentProjects + 2; ++index) {
        host::NoteRecentProject(temp.PathOf("p" + std::to_string(index) + ".json"));
    }
    const QStringList entries = RecentEntries();
    ASSERT_EQ(entries.size(), host::kMaxRecentProjects);
    EXPECT_TRUE(entries.front().endsWith("p11.json"));
    EXPECT_TRUE(entries.back().endsWith("p2.json"));

    QAction* clear = OpenRecentMenu().actions().back();
    EXPECT_EQ(clear->text(), "Clear Recent Projects");
    clear->trigger();
    EXPECT_TRUE(RecentEntries().isEmpty());
    EXPECT_FALSE(OpenRecentMenu().actions().front()->isEnabled()) << "No Recent Projects";
}

TEST_F(RememberedSettingsTest, EachKindOfFileDialogOpensWhereItLastChose) {
    auto fileIn = [this](const std::string& folder, const QString& name) {
        const QString path = QString::fromStdString(temp.PathOf(folder));
        EXPECT_TRUE(QDir().mkpath(path));
        QFile(path + "/" + name).open(QIODevice::WriteOnly);
        return path + "/" + name;
    };
    const QString project = fileIn("projects", "story.json");
    const QString media = fileIn("media", "harbour.mp4");

    host::DialogFileChooser dialogs;
    QString shownFolder;
    auto answer = [&shownFolder](const QString& file) {
        host_test::WhenModalLoopRuns([&shownFolder, file] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            shownFolder = dialog->directory().absolutePath();
            if (file.isEmpty()) {
                dialog->reject();
                return;
            }
            dialog->selectFile(file);
            static_cast<QDialog*>(dialog)->accept();
        });
    };
    answer(project);
    ASSERT_EQ(dialogs.ChooseProjectToOpen(&Window().GetMainWindow()), project.toStdString());
    answer(media);
    ASSERT_EQ(dialogs.ChooseMediaToImport(&Window().GetMainWindow()), media.toStdString());

    StartNextHost();
    answer({});
    EXPECT_EQ(dialogs.ChooseProjectToOpen(&Window().GetMainWindow()), "");
    EXPECT_EQ(shownFolder, QFileInfo(project).absolutePath());
    answer({});
    EXPECT_EQ(dialogs.ChooseProjectSavePath(&Window().GetMainWindow(), ""), "");
    EXPECT_EQ(shownFolder, QFileInfo(project).absolutePath()) << "Save As of an untitled project";
    answer({});
    EXPECT_EQ(dialogs.ChooseMediaToImport(&Window().GetMainWindow()), "");
    EXPECT_EQ(shownFolder, QFileInfo(media).absolutePath());
}

TEST_F(RememberedSettingsTest, ShortcutChangesAreBoundAgainInTheNextRun) {
    UIF::ShortcutManager& manager = *UIF::ShortcutManager::Instance();
    ASSERT_EQ(manager.BindKey("global", "cmd.file.save", "F2"), UIF::kBind_Done);
    ASSERT_EQ(manager.BindKey("global", "cmd.file.quit", ""), UIF::kBind_Done);
    ASSERT_EQ(manager.BindKey("captions", "cmd.captions.underline", "Ctrl+U"), UIF::kBind_Done);
    host::SaveShortcutChanges(*host::OpenHostSettings());

    StartNextHost();
    UIF::ShortcutManager& next = *UIF::ShortcutManager::Instance();
    EXPECT_EQ(next.GetBoundKey("global", "cmd.file.save"), "F2");
    EXPECT_EQ(next.GetBoundKey("global", "cmd.file.quit"), "") << "a key taken away stays away";
    EXPECT_EQ(next.GetBoundKey("captions", "cmd.captions.underline"), "Ctrl+U");
    EXPECT_EQ(next.GetBoundKey("global", "cmd.file.open"), "Ctrl+O") << "defaults stay";

    // Set back to its default, a command is no longer a change.
    ASSERT_EQ(next.BindKey("global", "cmd.file.save", "Ctrl+S"), UIF::kBind_Done);
    host::SaveShortcutChanges(*host::OpenHostSettings());
    EXPECT_FALSE(host::OpenHostSettings()->contains("shortcuts/global/cmd.file.save"));
}

TEST_F(RememberedSettingsTest, TheDemoOpensAsAnUnsavedCopyAndSavingNeverWritesTheExample) {
    const std::string example = host::DemoProjectPath();
    const QByteArray before = FileBytes(example);
    ASSERT_FALSE(before.isEmpty());
    host::LaunchOptions options;
    options.projectSource = host::LaunchOptions::ProjectSource::kDemoProject;
    ASSERT_EQ(host::OpenStartProject(Window(), options), 0);
    ASSERT_TRUE(Window().GetDocument().GetFilePath().empty());
    EXPECT_TRUE(Window().GetMainWindow().windowTitle().startsWith("Untitled"));
    EXPECT_TRUE(RecentEntries().isEmpty());

    Window().GetDocument().GetProject()->AddBin(u"Mine", BE::UndoMode::kAsUndoStep);
    const std::string copy = temp.PathOf("mine.json");
    chooser.answers.push_back(copy);
    ASSERT_TRUE(Window().GetFileActions().Save());
    EXPECT_EQ(chooser.questions, 1) << "saving asked for a file of its own";
    EXPECT_EQ(FileBytes(example), before);
    EXPECT_TRUE(std::filesystem::exists(copy));
}

} // namespace
