// The panel's commands as the host sends them along the focused chain, and
// the host's edit commands reaching the caption text being edited.
#include "PanelTestSupport.h"

#include "CaptionCommandIds.h"
#include "UIF/CommandRouting.h"
#include "UIF/ShortcutManager.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using HandlerCaptions::CaptionsView;
using panel_test::PanelTest;
using panel_test::Utf8;

class CommandsTest : public PanelTest {
protected:
    zelcaptioning::TextSpanAttributes FirstSpan(std::int32_t row) {
        return Rows()
            .At(row)
            ->GetCaption()
            ->GetCaptionTextParagraph(0)
            ->GetCaptionTextSpan(0)
            ->GetTextSpanStyleAttributes();
    }
    bool ViewHandles(UIF::CommandID id) {
        bool enabled = false;
        bool checked = false;
        bool mark = false;
        zelcore::UTF16String text;
        return View().FindCommandStatus(id, enabled, checked, mark, text);
    }
};

TEST_F(CommandsTest, StyleCommandsToggleWhatTheSelectionHas) {
    OpenDemoWithPanel();
    ClickPane(20, 2 * CaptionsPane::kRowPitchPx + 20);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_Bold));
    EXPECT_TRUE(FirstSpan(2).IsBolded());
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Bold Caption Text");
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_Bold));
    EXPECT_FALSE(FirstSpan(2).IsBolded());

    const bool italic = FirstSpan(0).IsItalicized();
    ClickPane(20, 20);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_Italicize));
    EXPECT_NE(FirstSpan(0).IsItalicized(), italic) << "the demo's first caption starts italic";
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_Underline));
    EXPECT_TRUE(FirstSpan(0).IsUnderlined());

    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_JustifyRight));
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Align Caption Text");
    EXPECT_EQ(Rows()
                  .At(0)
                  ->GetCaption()
                  ->GetCaptionTextParagraph(0)
                  ->GetParagraphStyleAttributes()
                  .GetTextAlignment(),
              zelcaptioning::kTextAlignment_Right);
}

TEST_F(CommandsTest, AKeyBoundInTheShortcutListRunsItsCommandWhileThePanelHasTheFocus) {
    OpenDemoWithPanel();
    ASSERT_EQ(
        UIF::ShortcutManager::Instance()->BindKey("captions", "cmd.captions.underline", "Ctrl+U"),
        UIF::kBind_Done);
    ClickPane(20, 2 * CaptionsPane::kRowPitchPx + 20);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_U, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_TRUE(FirstSpan(2).IsUnderlined());
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Underline Caption Text");
}

TEST_F(CommandsTest, TheMusicNoteGoesInAtTheCaretAndEditingGoesOn) {
    OpenDemoWithPanel();
    ClickText(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home, Qt::ControlModifier);
    for (int i = 0; i < 4; ++i) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    }
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_MusicNote));
    QApplication::processEvents();
    EXPECT_EQ(StreamText(1), "MARA\u266A: The boats go out\nbefore first light.");
    EXPECT_TRUE(TextWidget(1).hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), "!");
    EXPECT_EQ(StreamText(1), "MARA\u266A!: The boats go out\nbefore first light.")
        << "the caret stands after the note";
}

TEST_F(CommandsTest, EditCommandsGoToTheFocusedCaptionTextOnly) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    for (const UIF::CommandID id : {UIF::kCommand_Copy, UIF::kCommand_Cut, UIF::kCommand_Paste,
                                    UIF::kCommand_Undo, UIF::kCommand_Redo}) {
        EXPECT_FALSE(ViewHandles(id)) << "no caption text has the focus: " << id;
        EXPECT_FALSE(View().ObeyCommand(UIF::Command(id)));
    }

    ClickText(2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ShiftModifier);
    EXPECT_TRUE(ViewHandles(UIF::kCommand_Cut));
    EXPECT_FALSE(ViewHandles(UIF::kCommand_SelectAll)) << "select all is never the view's";
    ASSERT_TRUE(UIF::SendCommand(UIF::kCommand_Cut));
    EXPECT_EQ(StreamText(2), "") << "the cut reaches the stream as typing does";
    ASSERT_TRUE(UIF::SendCommand(UIF::kCommand_Paste));
    EXPECT_EQ(StreamText(2), "Every morning, rain or not.");
}

TEST_F(CommandsTest, ColourTargetCommandsChooseWhatTheColourControlsEdit) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    EXPECT_EQ(View().GetColorTarget(), CaptionsView::kColorTarget_Text);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_BackgroundColor));
    EXPECT_EQ(View().GetColorTarget(), CaptionsView::kColorTarget_Background);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_EdgeColor));
    EXPECT_EQ(View().GetColorTarget(), CaptionsView::kColorTarget_Edge);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_TextColor));
    EXPECT_EQ(View().GetColorTarget(), CaptionsView::kColorTarget_Text);
}

} // namespace
