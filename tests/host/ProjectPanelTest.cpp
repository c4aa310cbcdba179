// The project panel's gestures, made with real mouse and key events, and the
// messages the panels hear of them.
#include "HSL/Messages.h"
#include "HostCommands.h"
#include "HostTestSupport.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Stations.h"
#include "SequenceSettingsDialog.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTreeView>

#include <gmock/gmock.h>

namespace {

using host_test::HostWindowTest;
using host_test::MessageLog;
using testing::ElementsAre;

class ProjectPanelTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        OpenDemo();
        clip = Clip(host_test::kCaptionedClip);
        sequence = Sequence(host_test::kDemoSequence);
        ASSERT_TRUE(clip && sequence);
        ASSERT_GE(clip->GetCaptioningStreamCount(), 2u);
    }

    // Right-clicks the item's row and chooses the entry of its context menu
    // (a path of texts through submenus); false when an entry is missing.
    bool ChooseFromContextMenu(const BE::IProjectItem* item, QStringList path) {
        QTreeView& tree = Window().GetProjectPanel().GetTreeView();
        const QPoint at =
            tree.visualRect(Window().GetProjectPanel().GetModel().IndexOf(item)).center();
        bool chosen = false;
        host_test::WhenModalLoopRuns([&] {
            QMenu* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            for (QMenu* current = menu; current && !path.isEmpty();) {
                const QString text = path.takeFirst();
                QAction* entry = nullptr;
                for (QAction* action : current->actions()) {
                    entry = action->text() == text ? action : entry;
                }
                if (!entry) {
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
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, tree.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(tree.viewport(), &event);
        return chosen;
    }

    KSL::InterfaceRef<BE::IMasterClip> clip;
    KSL::InterfaceRef<BE::ISequence> sequence;
};

TEST_F(ProjectPanelTest, ClicksAndArrowKeysAnnounceTheSelectedItemOnItsStation) {
    MessageLog bins(MZ::kStation_BinActivation);
    MessageLog clips(MZ::kStation_MasterClipActivation);
    MessageLog sequences(MZ::kStation_SequenceActivation);
    const auto bin = clip->GetBin();

    ClickItem(bin.Get());
    ASSERT_EQ(bins.Of<MZ::BinSelectedMessage>().size(), 1u);
    EXPECT_EQ(bins.Of<MZ::BinSelectedMessage>()[0]->GetBin(), bin);

    ClickItem(clip.Get());
    // A caption stream's row selects its clip.
    ClickItem(clip->GetCaptioningStream(1).Get());
    ASSERT_EQ(clips.Of<MZ::MasterClipSelectedMessage>().size(), 2u);
    for (const auto* message : clips.Of<MZ::MasterClipSelectedMessage>()) {
        EXPECT_EQ(message->GetMasterClip(), clip);
    }

    // Clicking the current row again is no new selection.
    ClickItem(clip->GetCaptioningStream(1).Get());
    EXPECT_EQ(clips.entries.size(), 2u);

    ClickItem(sequence.Get());
    ASSERT_EQ(sequences.Of<MZ::SequenceSelectedMessage>().size(), 1u);
    EXPECT_EQ(sequences.Of<MZ::SequenceSelectedMessage>()[0]->GetSequence(), sequence);

    // Up from the first stream lands on its clip.
    ClickItem(clip->GetCaptioningStream(0).Get());
    QTest::keyClick(&Window().GetProjectPanel().GetTreeView(), Qt::Key_Up);
    EXPECT_EQ(Window().GetProjectPanel().GetSelectedItem().Get(),
              static_cast<const BE::IProjectItem*>(clip.Get()));
    EXPECT_EQ(clips.Of<MZ::MasterClipSelectedMessage>().size(), 4u);
    EXPECT_EQ(bins.entries.size(), 1u);
    EXPECT_EQ(sequences.entries.size(), 1u);
}

TEST_F(ProjectPanelTest, OpeningAStreamAnnouncesItForEditingAndAClipForTheSourceMonitor) {
    MessageLog opened(MZ::kStation_ClosedCaptionsActivation);
    MessageLog clips(MZ::kStation_MasterClipActivation);
    const auto stream = clip->GetCaptioningStream(1);

    DoubleClickItem(stream.Get());
    ASSERT_EQ(opened.Of<MZ::ClosedCaptionsOpenedMessage>().size(), 1u)
        << testing::PrintToString(opened.Names());
    EXPECT_EQ(opened.Of<MZ::ClosedCaptionsOpenedMessage>()[0]->GetStream(), stream);
    EXPECT_EQ(opened.Of<MZ::ClosedCaptionsOpenedMessage>()[0]->GetMasterClip(), clip);

    // Enter opens the current row as a double-click does.
    ClickItem(clip->GetCaptioningStream(0).Get());
    QTest::keyClick(&Window().GetProjectPanel().GetTreeView(), Qt::Key_Return);
    ASSERT_EQ(opened.entries.size(), 2u);
    EXPECT_EQ(opened.Of<MZ::ClosedCaptionsOpenedMessage>()[1]->GetStream(),
              clip->GetCaptioningStream(0));

    ClickItem(clip.Get());
    QTest::keyClick(&Window().GetProjectPanel().GetTreeView(), Qt::Key_Enter);
    const auto sourceClips = clips.Of<HSL::SourceClipSelectedMessage>();
    ASSERT_EQ(sourceClips.size(), 1u);
    EXPECT_EQ(sourceClips[0]->GetKind(), HSL::SourceClipSelectedMessage::kKind_MasterClip);
    EXPECT_EQ(sourceClips[0]->GetClip(), clip);
    EXPECT_EQ(opened.entries.size(), 2u);
}

TEST_F(ProjectPanelTest, ContextMenusOpenAStreamInASequenceAndCloseAClip) {
    MessageLog opened(MZ::kStation_ClosedCaptionsActivation);
    MessageLog clips(MZ::kStation_MasterClipActivation);
    const auto stream = clip->GetCaptioningStream(0);

    ASSERT_TRUE(ChooseFromContextMenu(
        stream.Get(), {"Open in Sequence", QString::fromStdString(host_test::kDemoSequence)}));
    const auto items = opened.Of<MZ::CaptioningTrackItemOpenedMessage>();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(items[0]->GetTrackItem().stream, stream);
    EXPECT_EQ(items[0]->GetTrackItem().masterClip, clip);
    EXPECT_EQ(items[0]->GetTrackItem().sequence, sequence);

    ASSERT_TRUE(ChooseFromContextMenu(clip.Get(), {"Close Clip"}));
    ASSERT_EQ(clips.Of<MZ::MasterClipClosedMessage>().size(), 1u);
    EXPECT_EQ(clips.Of<MZ::MasterClipClosedMessage>()[0]->GetMasterClip(), clip);

    // The File menu closes the selected clip, here through its stream's row;
    // without a selected clip the command is disabled.
    ClickItem(stream.Get());
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_CloseClip));
    ASSERT_EQ(clips.Of<MZ::MasterClipClosedMessage>().size(), 2u);
    EXPECT_EQ(clips.Of<MZ::MasterClipClosedMessage>()[1]->GetMasterClip(), clip);
    ClickItem(sequence.Get());
    EXPECT_FALSE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_CloseClip));
    // The clip stays in the project.
    EXPECT_TRUE(Window().GetProjectPanel().GetModel().IndexOf(clip.Get()).isValid());
}

TEST_F(ProjectPanelTest, OpeningASequenceEditsItsSettingsAsOneUndoStep) {
    MessageLog sequences(MZ::kStation_SequenceActivation);
    auto answerDialog = [](bool accept, const QString& name) {
        host_test::WhenModalLoopRuns([accept, name] {
            auto* dialog =
                dynamic_cast<host::SequenceSettingsDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            dialog->GetNameField().setText(name);
            accept ? dialog->accept() : dialog->reject();
        });
    };

    answerDialog(false, "Cancelled Name");
    DoubleClickItem(sequence.Get());
    EXPECT_TRUE(sequences.Of<MZ::SequenceSettingsChangedMessage>().empty());
    EXPECT_EQ(zelcore::ToUTF8(sequence->GetName()), host_test::kDemoSequence);

    answerDialog(true, "Harbour Story - Final");
    QTest::keyClick(&Window().GetProjectPanel().GetTreeView(), Qt::Key_Return);
    const auto changes = sequences.Of<MZ::SequenceSettingsChangedMessage>();
    ASSERT_EQ(changes.size(), 1u);
    EXPECT_EQ(changes[0]->GetSequence(), sequence);
    EXPECT_EQ(zelcore::ToUTF8(sequence->GetName()), "Harbour Story - Final");
    // The row follows the new name and stays the selected one.
    const QModelIndex row = Window().GetProjectPanel().GetModel().IndexOf(sequence.Get());
    EXPECT_EQ(row.data().toString(), "Harbour Story - Final");

    Window().GetDocument().Undo();
    EXPECT_EQ(zelcore::ToUTF8(sequence->GetName()), host_test::kDemoSequence);
    EXPECT_EQ(sequences.Of<MZ::SequenceSettingsChangedMessage>().size(), 2u);
}

TEST_F(ProjectPanelTest, RebuildsKeepTheSelectionAndAnnounceItClearedWhenItsItemGoes) {
    MessageLog clips(MZ::kStation_MasterClipActivation);
    const auto plain = Clip(host_test::kPlainClip);
    ClickItem(plain.Get());
    ASSERT_EQ(clips.entries.size(), 1u);
    QTreeView& tree = Window().GetProjectPanel().GetTreeView();
    tree.collapse(Window().GetProjectPanel().GetModel().IndexOf(clip.Get()));

    // Adding a stream rebuilds the tree: the selection and the collapsed row
    // stay as they were, and nothing is announced.
    ASSERT_TRUE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_AddCEA608Stream));
    ASSERT_EQ(plain->GetCaptioningStreamCount(), 1u);
    EXPECT_EQ(Window().GetProjectPanel().GetSelectedItem().Get(),
              static_cast<const BE::IProjectItem*>(plain.Get()));
    EXPECT_FALSE(tree.isExpanded(Window().GetProjectPanel().GetModel().IndexOf(clip.Get())));
    EXPECT_TRUE(tree.isExpanded(Window().GetProjectPanel().GetModel().IndexOf(plain.Get())));
    EXPECT_EQ(clips.entries.size(), 1u);
    // A clip takes one stream of each format.
    EXPECT_FALSE(ChooseMenuCommand(Window().GetFileMenu(), host::kHostCommand_AddCEA608Stream));

    Window().GetDocument().GetProject()->RemoveMasterClip(plain, BE::UndoMode::kAsUndoStep);
    ASSERT_EQ(clips.Of<MZ::MasterClipSelectedMessage>().size(), 2u);
    EXPECT_FALSE(clips.Of<MZ::MasterClipSelectedMessage>()[1]->GetMasterClip());
    EXPECT_FALSE(Window().GetProjectPanel().GetSelectedItem());
}

} // namespace
