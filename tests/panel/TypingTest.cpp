// Typing into a row: live updates of the stream, one undo step when the row
// is left, Escape, and Tab between rows.
#include "PanelTestSupport.h"

#include "CaptionEdit.h"
#include "MZ/Captioning.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_test::PanelTest;
using panel_test::Printed;
using panel_test::Utf8;

class TypingTest : public PanelTest {
protected:
    // Clicks into the row's text and puts the caret at its end.
    void EditRowAtEnd(std::int32_t row) {
        ClickText(row);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End, Qt::ControlModifier);
        QApplication::processEvents();
    }
    // Gives the focus to the project panel; the poll then commits.
    void LeaveThePanel() {
        Window().GetProjectPanel().GetTreeView().setFocus();
        Wait(250);
    }
};

TEST_F(TypingTest, TypedTextIsLiveAndLeavingTheRowMakesOneStepThatUndoesExactly) {
    OpenDemoWithPanel();
    const zelcaptioning::CaptionPtr caption = Rows().At(1)->GetCaption();
    const std::string before = Printed(*caption);
    const std::size_t steps = UndoHistory().GetStepCount();

    EditRowAtEnd(1);
    EXPECT_EQ(Rows().GetCurrentIndex(), 1) << "clicking into a row's text selects the row";
    QTest::keyClicks(QApplication::focusWidget(), " Yes");
    EXPECT_EQ(StreamText(1), "MARA: The boats go out\nbefore first light. Yes");
    EXPECT_EQ(UndoHistory().GetStepCount(), steps) << "no undo step while typing";

    LeaveThePanel();
    ASSERT_EQ(UndoHistory().GetStepCount(), steps + 1);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "");
    UndoHistory().Undo();
    EXPECT_EQ(Printed(*caption), before);
    EXPECT_EQ(Utf8(Rows().At(1)->GetTextControl()->GetValue()),
              "MARA: The boats go out\r\nbefore first light.");
}

TEST_F(TypingTest, EscapePutsTheCaptionBackWithoutAStep) {
    OpenDemoWithPanel();
    const std::string before = Printed(*Rows().At(2)->GetCaption());
    const std::size_t steps = UndoHistory().GetStepCount();
    EditRowAtEnd(2);
    QTest::keyClicks(QApplication::focusWidget(), " Or snow.");
    ASSERT_NE(Printed(*Rows().At(2)->GetCaption()), before);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(Printed(*Rows().At(2)->GetCaption()), before);
    EXPECT_EQ(Utf8(Rows().At(2)->GetTextControl()->GetValue()), "Every morning, rain or not.");
    LeaveThePanel();
    EXPECT_EQ(UndoHistory().GetStepCount(), steps);
}

TEST_F(TypingTest, TabAndShiftTabMoveEditingBetweenRows) {
    OpenDemoWithPanel();
    const std::size_t steps = UndoHistory().GetStepCount();
    EditRowAtEnd(1);
    QTest::keyClicks(QApplication::focusWidget(), "!");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QApplication::processEvents();
    EXPECT_EQ(Rows().GetCurrentIndex(), 2);
    EXPECT_TRUE(TextWidget(2).hasFocus());
    EXPECT_EQ(UndoHistory().GetStepCount(), steps + 1) << "the typed text became its own step";
    EXPECT_EQ(StreamText(1), "MARA: The boats go out\nbefore first light.!");

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QApplication::processEvents();
    EXPECT_EQ(Rows().GetCurrentIndex(), 1);
    EXPECT_TRUE(TextWidget(1).hasFocus());

    // With another modifier the key is the text control's own.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    QApplication::processEvents();
    EXPECT_EQ(Rows().GetCurrentIndex(), 1);
}

TEST_F(TypingTest, TypingIntoAPartlyBoldCaptionKeepsTheBoldSpanBold) {
    OpenDemoWithPanel();
    ClickPane(20, 2 * CaptionsPane::kRowPitchPx + 20);
    ASSERT_EQ(Rows().GetCurrentIndex(), 2);
    Rows().SetSelectionRange(0, 5);
    Pane().SetBold(true);
    EditRowAtEnd(2);
    QTest::keyClicks(QApplication::focusWidget(), "!");
    LeaveThePanel();

    const zelcaptioning::CaptionPtr caption = Rows().At(2)->GetCaption();
    const zelcaptioning::CaptionTextParagraphPtr line = caption->GetCaptionTextParagraph(0);
    ASSERT_EQ(line->GetNumSpans(), 2u);
    EXPECT_EQ(Utf8(line->GetCaptionTextSpan(0)->GetCaptionText()), "Every");
    EXPECT_TRUE(line->GetCaptionTextSpan(0)->GetTextSpanStyleAttributes().IsBolded());
    EXPECT_EQ(Utf8(line->GetCaptionTextSpan(1)->GetCaptionText()), " morning, rain or not.!");
    EXPECT_FALSE(line->GetCaptionTextSpan(1)->GetTextSpanStyleAttributes().IsBolded());
}

} // namespace
