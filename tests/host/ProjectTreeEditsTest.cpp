// Edits in the project tree: renaming in place, deleting, adding caption
// streams and sequences, each one undo step named for what it does; the empty
// project's note; the standard keys.
#include "HostCommands.h"
#include "HostTestSupport.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include <gmock/gmock.h>

namespace {

using host_test::HostWindowTest;

class ProjectTreeEditsTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
    }

    QTreeView& Tree() { return Window().GetProjectPanel().GetTreeView(); }
    QMenu& Edit() { return Window().GetEditMenu(); }
    QString UndoText() { return MenuText(Edit(), UIF::kCommand_Undo); }
    std::string NameOf(const KSL::InterfaceRef<BE::IProjectItem>& item) {
        return zelcore::ToUTF8(item->GetName());
    }

    // The line edit of a name being typed in the tree; null when none is open.
    QLineEdit* NameEditor() {
        // A closed editor lingers until it is deleted later.
        for (QLineEdit* editor : Tree().findChildren<QLineEdit*>()) {
            if (editor->isVisible()) {
                return editor;
            }
        }
        return nullptr;
    }

    void TypeName(const QString& name) {
        QLineEdit* editor = NameEditor();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, name);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents();
    }

    // Right-clicks the item's row and chooses the entry at the path of texts;
    // false when an entry is missing or disabled.
    bool ChooseFromContextMenu(const BE::IProjectItem* item, QStringList path) {
        const QPoint at =
            Tree().visualRect(Window().GetProjectPanel().GetModel().IndexOf(item)).center();
        bool chosen = false;
        host_test::WhenModalLoopRuns([&] {
            QMenu* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QMenu* current = menu; current && !path.isEmpty();) {
                const QString text = path.takeFirst();
                QAction* entry = nullptr;
                for (QAction* action : current->actions()) {
                    entry = action->text() == text ? action : entry;
                }
                if (!entry || !entry->isEnabled()) {
                    break;
                }
                if (path.isEmpty()) {
                    entry->trigger();
                    chosen = true;
                }
                current = entry->menu();
            }
            if (menu) {
                menu->close();
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, Tree().viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(Tree().viewport(), &event);
        return chosen;
    }
};

TEST_F(ProjectTreeEditsTest, F2RenamesBinsClipsAndSequencesEachAsAnUndoStepNamedForIt) {
    const auto clip = Clip(host_test::kPlainClip);
    const struct {
        KSL::InterfaceRef<BE::IProjectItem> item;
        const char* undo;
    } cases[] = {{clip->GetBin(), "Undo Rename Bin"},
                 {clip, "Undo Rename Master Clip"},
                 {Sequence(host_test::kDemoSequence), "Undo Rename Sequence"}};
    for (const auto& [item, undo] : cases) {
        const std::string before = NameOf(item);
        ClickItem(item.Get());
        QTest::keyClick(&Tree(), Qt::Key_F2);
        TypeName("  Renamed " + QString::fromStdString(before) + " ");
        EXPECT_EQ(NameOf(item), "Renamed " + before);
        EXPECT_EQ(UndoText(), undo);
        const QModelIndex row = Window().GetProjectPanel().GetModel().IndexOf(item.Get());
        EXPECT_EQ(row.data().toString().toStdString(), "Renamed " + before) << "the row follows";

        ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));
        EXPECT_EQ(NameOf(item), before);
    }
}

TEST_F(ProjectTreeEditsTest, ASlowSecondClickRenamesAndAnEmptyNameChangesNothing) {
    const auto clip = Clip(host_test::kPlainClip);
    ClickItem(clip.Get());
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    ClickItem(clip.Get());
    ASSERT_TRUE(host_test::WaitUntil([this] { return NameEditor() != nullptr; }));
    TypeName("   ");
    EXPECT_EQ(NameOf(clip), host_test::kPlainClip);
    EXPECT_EQ(UndoText(), "Undo");

    // A caption stream has no name to change.
    const auto stream = Clip(host_test::kCaptionedClip)->GetCaptioningStream(0);
    ClickItem(stream.Get());
    QTest::keyClick(&Tree(), Qt::Key_F2);
    EXPECT_EQ(NameEditor(), nullptr);
}

TEST_F(ProjectTreeEditsTest, DeleteRemovesClipsStreamsAndSequencesAndUndoPutsThemBack) {
    const auto captioned = Clip(host_test::kCaptionedClip);
    const auto stream = captioned->GetCaptioningStream(1);
    const auto sequence = Sequence(host_test::kDemoSequence);
    const auto bin = captioned->GetBin();

    ClickItem(stream.Get());
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(captioned->GetCaptioningStreamCount(), 1u);
    EXPECT_EQ(UndoText(), "Undo Remove Caption Stream");

    ClickItem(captioned.Get());
    ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Delete)) << "Edit > Delete";
    EXPECT_EQ(bin->GetMasterClipCount(), 1u);
    EXPECT_EQ(UndoText(), "Undo Remove Master Clip");

    ASSERT_TRUE(ChooseFromContextMenu(sequence.Get(), {"Delete"}));
    EXPECT_EQ(bin->GetSequenceCount(), 0u);
    EXPECT_EQ(UndoText(), "Undo Remove Sequence");

    for (int step = 0; step < 3; ++step) {
        ASSERT_TRUE(ChooseMenuCommand(Edit(), UIF::kCommand_Undo));
    }
    EXPECT_EQ(bin->GetSequence(0), sequence);
    EXPECT_EQ(bin->GetMasterClip(0), captioned) << "back at its place";
    EXPECT_EQ(captioned->GetCaptioningStream(1), stream);

    // A bin is not deleted, by key or by menu.
    ClickItem(bin.Get());
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Window().GetDocument().GetProject()->GetBinCount(), 1u);
    EXPECT_FALSE(ChooseMenuCommand(Edit(), UIF::kCommand_Delete));
    EXPECT_FALSE(ChooseFromContextMenu(bin.Get(), {"Delete"}));
}

TEST_F(ProjectTreeEditsTest, AClipsContextMenuAddsTheCaptionStreamsItHasNot) {
    const auto plain = Clip(host_test::kPlainClip);
    ASSERT_TRUE(ChooseFromContextMenu(plain.Get(), {"Add Caption Stream", "Teletext Subtitles"}));
    ASSERT_EQ(plain->GetCaptioningStreamCount(), 1u);
    EXPECT_EQ(plain->GetCaptioningStream(0)->GetStreamFormat(),
              zelcaptioning::kStreamFormat_Teletext);
    EXPECT_EQ(UndoText(), "Undo Add Caption Stream");
    EXPECT_FALSE(ChooseFromContextMenu(plain.Get(), {"Add Caption Stream", "Teletext Subtitles"}))
        << "a clip has one stream of each format";
    EXPECT_TRUE(ChooseFromContextMenu(plain.Get(), {"Add Caption Stream", "Open Captions"}));
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 2u);
}

TEST_F(ProjectTreeEditsTest, NewSequenceTakesTheSelectedClipsPictureAndIsSelected) {
    const auto plain = Clip(host_test::kPlainClip);
    ClickItem(plain.Get());
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_NewSequence));
    const auto bin = plain->GetBin();
    ASSERT_EQ(bin->GetSequenceCount(), 2u);
    const auto added = bin->GetSequence(1);
    EXPECT_EQ(NameOf(added), "Sequence 2");
    EXPECT_EQ(added->GetSettings().frameRate, plain->GetSettings().frameRate);
    EXPECT_EQ(added->GetSettings().frameRect, plain->GetSettings().frameRect);
    EXPECT_EQ(Window().GetProjectPanel().GetSelectedItem(), added);
    EXPECT_EQ(UndoText(), "Undo Add Sequence");
}

TEST_F(ProjectTreeEditsTest, AnEmptyProjectSaysHowToStartAndItsButtonImports) {
    host::ProjectPanel& panel = Window().GetProjectPanel();
    EXPECT_FALSE(panel.GetEmptyNote().isVisible());
    ASSERT_TRUE(Window().GetFileActions().NewProject());
    EXPECT_TRUE(panel.GetEmptyNote().isVisible());
    EXPECT_TRUE(panel.GetEmptyNote().text().contains("Import"));

    chooser.answers.push_back(temp.PathOf("missing.mp4"));
    QTest::mouseClick(&panel.GetImportButton(), Qt::LeftButton);
    EXPECT_EQ(chooser.questions, 1) << "the button asks for a media file as File > Import does";
}

TEST_F(ProjectTreeEditsTest, RowsShowTheirWholeNameAsATooltip) {
    const auto clip = Clip(host_test::kPlainClip);
    const QModelIndex row = Window().GetProjectPanel().GetModel().IndexOf(clip.Get());
    EXPECT_EQ(row.data(Qt::ToolTipRole).toString().toStdString(), host_test::kPlainClip);
}

TEST_F(ProjectTreeEditsTest, CtrlYRedoesLikeCtrlShiftZ) {
    const auto plain = Clip(host_test::kPlainClip);
    ClickItem(plain.Get());
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_AddCEA608Stream));
    QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 0u);
    QTest::keyClick(&Tree(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 1u);
    QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&Tree(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(plain->GetCaptioningStreamCount(), 1u);
}

} // namespace
