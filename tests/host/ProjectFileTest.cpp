// The File menu's project commands: saving, reopening, the questions about
// unsaved changes, and files that cannot be read or written.
#include "HostCommands.h"
#include "HostTestSupport.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

namespace {

using host_test::HostWindowTest;
using testing::HasSubstr;

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class ProjectFileTest : public HostWindowTest {
protected:
    // The demo saved as a project of the test's own, with one more stream.
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
        path = temp.PathOf("story.json");
        ClickItem(Clip(host_test::kPlainClip).Get());
        ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_AddCEA708Stream));
        chooser.answers.push_back(path);
        ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_SaveProjectAs));
    }

    // Lets a real message box ask, and presses its button when it shows.
    void AnswerNextMessageBox(QMessageBox::StandardButton button) {
        messageBoxes.reset();
        host_test::WhenModalLoopRuns([this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            askedText = box->text().toStdString();
            for (QAbstractButton* shown : box->buttons()) {
                askedButtons << shown->text().remove(QLatin1Char('&'));
            }
            box->button(button)->click();
        });
    }

    std::string MessageBoxText(std::size_t index) const {
        return zelcore::ToUTF8(messageBoxes->GetRecords().at(index).text);
    }

    std::string path;
    std::string askedText;
    QStringList askedButtons;
};

TEST_F(ProjectFileTest, SaveAsNamesTheWindowAndReopeningGivesTheSameProject) {
    EXPECT_EQ(Window().GetDocument().GetFilePath(), path);
    EXPECT_THAT(Window().GetMainWindow().windowTitle().toStdString(), HasSubstr("story.json"));
    EXPECT_FALSE(Window().GetMainWindow().isWindowModified());
    const std::string saved = ReadFile(path);

    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_NewProject));
    EXPECT_EQ(Window().GetDocument().GetProject()->GetBinCount(), 0u);
    EXPECT_TRUE(messageBoxes->GetRecords().empty()) << "nothing to save was asked about";

    chooser.answers.push_back(path);
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_OpenProject));
    EXPECT_EQ(Clip(host_test::kPlainClip)->GetCaptioningStreamCount(), 1u);
    EXPECT_TRUE(
        Window().GetProjectPanel().GetModel().IndexOf(Clip(host_test::kPlainClip).Get()).isValid());

    // Saving what was opened writes the same bytes.
    std::filesystem::remove(path);
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_SaveProject));
    EXPECT_EQ(ReadFile(path), saved);
    EXPECT_EQ(chooser.questions, 2) << "Save asked for no path";
}

TEST_F(ProjectFileTest, FilesThatCannotBeReadOrWrittenAreReportedAndChangeNothing) {
    const auto project = Window().GetDocument().GetProject();
    const std::string broken = temp.PathOf("broken.json");
    std::ofstream(broken)
        << "{\n  \"format\": \"corvala-project\",\n  \"version\": 2,\n  \"bins\": [}\n";
    EXPECT_FALSE(Window().GetFileActions().OpenProjectFile(broken));
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    EXPECT_THAT(MessageBoxText(0), HasSubstr(broken));
    EXPECT_THAT(MessageBoxText(0), HasSubstr("line 4"));
    EXPECT_EQ(Window().GetDocument().GetProject(), project);
    EXPECT_EQ(Window().GetDocument().GetFilePath(), path);

    project->AddBin(u"Unsaved", BE::UndoMode::kAsUndoStep);
    const std::string nowhere = temp.PathOf("no/such/folder/story.json");
    chooser.answers.push_back(nowhere);
    EXPECT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_SaveProjectAs));
    ASSERT_EQ(messageBoxes->GetRecords().size(), 2u);
    EXPECT_THAT(MessageBoxText(1), HasSubstr("could not be saved"));
    EXPECT_THAT(MessageBoxText(1), HasSubstr(nowhere));
    EXPECT_EQ(Window().GetDocument().GetFilePath(), path);
    EXPECT_TRUE(Window().GetMainWindow().isWindowModified());
    EXPECT_THAT(ReadFile(path), testing::Not(HasSubstr("Unsaved")));

    // Cancelling the path question saves nothing and reports nothing.
    EXPECT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_SaveProjectAs));
    EXPECT_EQ(messageBoxes->GetRecords().size(), 2u);
    EXPECT_TRUE(Window().GetDocument().IsModified());
}

TEST_F(ProjectFileTest, ClosingWithChangesAsksAndCancelKeepsTheWindow) {
    Window().GetDocument().GetProject()->AddBin(u"Late Change", BE::UndoMode::kAsUndoStep);

    AnswerNextMessageBox(QMessageBox::Cancel);
    EXPECT_FALSE(Window().GetMainWindow().close());
    EXPECT_THAT(askedText, HasSubstr("\"story.json\""));
    askedButtons.sort();
    EXPECT_EQ(askedButtons, (QStringList{"Cancel", "Don't Save", "Save"}));
    EXPECT_TRUE(Window().GetMainWindow().isVisible());
    EXPECT_THAT(ReadFile(path), testing::Not(HasSubstr("Late Change")));

    AnswerNextMessageBox(QMessageBox::Discard);
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_NewProject));
    EXPECT_THAT(ReadFile(path), testing::Not(HasSubstr("Late Change")));
    EXPECT_EQ(Window().GetDocument().GetProject()->GetBinCount(), 0u);
}

TEST_F(ProjectFileTest, QuittingWithChangesSavesThemWhenTheUserSaysYes) {
    Window().GetDocument().GetProject()->AddBin(u"Late Change", BE::UndoMode::kAsUndoStep);
    // The recorder answers every question with its default, Yes.
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_Quit));
    ASSERT_EQ(messageBoxes->GetRecords().size(), 1u);
    EXPECT_EQ(messageBoxes->GetRecords()[0].flag, UIF::MBFlag::kSaveDontSaveCancel);
    EXPECT_FALSE(Window().GetMainWindow().isVisible());
    EXPECT_THAT(ReadFile(path), HasSubstr("Late Change"));
}

} // namespace
