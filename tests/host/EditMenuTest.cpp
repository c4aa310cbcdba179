// The Edit menu: undo and redo named by the step, pending caption edits
// committed first, and the standard edit commands sent along the command chain.
#include "HostCommands.h"
#include "HostTestSupport.h"
#include "KSL/StationUtils.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Stations.h"
#include "ShortcutsDialog.h"
#include "UIF/Command.h"

#include <QApplication>
#include <QTableView>

#include <gtest/gtest.h>

namespace {

using host_test::HostWindowTest;

// Stands for a caption panel holding typed text: asked to commit, it writes
// that text to the project as an undo step of its own.
class PendingEditor : public KSL::Listener {
public:
    explicit PendingEditor(KSL::InterfaceRef<BE::IProject> project)
        : project_(std::move(project)) {
        KSL::StationUtils::AddListener(MZ::kStation_Info, this);
    }
    bool hasPendingEdit = false;
    int commitRequests = 0;

protected:
    bool HandleMessage(const KSL::Message& message) override {
        if (!message.As<MZ::CaptionCommitEditsMessage>()) {
            return false;
        }
        ++commitRequests;
        if (hasPendingEdit) {
            hasPendingEdit = false;
            project_->AddBin(u"Typed", BE::UndoMode::kAsUndoStep);
        }
        return true;
    }

private:
    KSL::InterfaceRef<BE::IProject> project_;
};

// A view's answers for the clipboard commands, at the end of the chain.
class ClipboardHandler : public UIF::CommandHandler {
public:
    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool&, bool&,
                           zelcore::UTF16String&) override {
        if (id != UIF::kCommand_Copy && id != UIF::kCommand_Paste) {
            return false;
        }
        enabled = id == UIF::kCommand_Copy;
        return true;
    }
    bool ObeyCommand(const UIF::Command& command) override {
        obeyed.push_back(command.GetID());
        return command.GetID() == UIF::kCommand_Copy;
    }
    std::vector<UIF::CommandID> obeyed;
};

class EditMenuTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
    }
    QMenu& Edit() { return Window().GetEditMenu(); }
};

TEST_F(EditMenuTest, UndoAndRedoAreNamedByTheStepAndCarryItOut) {
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));
    EXPECT_EQ(MenuText(Edit(), UIF::kCommand_Undo), "Undo");
    EXPECT_FALSE(Window().GetMainWindow().isWindowModified());

    const auto plain = Clip(host_test::kPlainClip);
    ClickItem(plain.Get());
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_AddOpenCaptionStream));
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 1u);
    EXPECT_EQ(MenuText(Edit(), UIF::kCommand_Undo), "Undo Add Caption Stream");
    EXPECT_TRUE(Window().GetMainWindow().isWindowModified());

    ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 0u);
    EXPECT_FALSE(Window().GetMainWindow().isWindowModified());
    EXPECT_EQ(MenuText(Edit(), UIF::kCommand_Redo), "Redo Add Caption Stream");
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));

    ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Redo));
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 1u);
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Redo));
    EXPECT_EQ(MenuText(Edit(), UIF::kCommand_Redo), "Redo");
}

TEST_F(EditMenuTest, PendingCaptionEditsAreCommittedBeforeUndoSoUndoTakesThemBack) {
    const auto project = Window().GetDocument().GetProject();
    const std::size_t bins = project->GetBinCount();
    project->AddBin(u"Earlier", BE::UndoMode::kAsUndoStep);
    PendingEditor editor(project);
    editor.hasPendingEdit = true;

    // Undo takes back the typed text, not the step before it.
    ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));
    EXPECT_EQ(editor.commitRequests, 1);
    ASSERT_EQ(project->GetBinCount(), bins + 1);
    EXPECT_EQ(zelcore::ToUTF8(project->GetBin(bins)->GetName()), "Earlier");
    EXPECT_EQ(MenuText(Edit(), UIF::kCommand_Redo), "Redo Add Bin");

    ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Redo));
    EXPECT_EQ(editor.commitRequests, 2);
    EXPECT_EQ(project->GetBinCount(), bins + 2);
}

TEST_F(EditMenuTest, StandardEditCommandsGoToWhoeverAnswersOnTheChain) {
    for (UIF::CommandID id : {UIF::kCommand_Cut, UIF::kCommand_Copy, UIF::kCommand_Paste,
                              UIF::kCommand_Delete, UIF::kCommand_SelectAll}) {
        EXPECT_FALSE(ChooseMenuCommand(Edit(), id)) << "nobody answers command " << id;
    }
    ClipboardHandler handler;
    UIF::ApplicationCommander()->AttachCommandHandler(&handler);
    EXPECT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Copy));
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Paste));
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Cut));
    UIF::ApplicationCommander()->DetachCommandHandler(&handler);
    EXPECT_EQ(handler.obeyed, std::vector<UIF::CommandID>{UIF::kCommand_Copy});
}

TEST_F(EditMenuTest, KeyboardShortcutsListsTheHostsAndThePlugInsCommands) {
    // Each row as "command | panel | key".
    QStringList rows;
    host_test::WhenModalLoopRuns([&] {
        auto* dialog = dynamic_cast<host::ShortcutsDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        const QAbstractItemModel& model = *dialog->GetTable().model();
        for (int row = 0; row < model.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model.columnCount(); ++column) {
                cells << model.index(row, column).data().toString();
            }
            rows << cells.join(" | ");
        }
        dialog->reject();
    });
    ASSERT_TRUE(ChooseMenuCommand(Edit(), host::kHostCommand_KeyboardShortcuts));
    EXPECT_TRUE(rows.contains("Save the project | Application | Ctrl+S"))
        << rows.join("\n").toStdString();
    // The captions plug-in's ten commands, in the order it declares them, named
    // by their words since the plug-in gives no descriptions.
    const QStringList captions = rows.filter("| Captions Panel |");
    ASSERT_EQ(captions.size(), 10) << rows.join("\n").toStdString();
    EXPECT_TRUE(captions.front().startsWith("Justify Left | Captions Panel"));
    EXPECT_TRUE(captions.back().startsWith("Edge Color | Captions Panel"));
}

} // namespace
