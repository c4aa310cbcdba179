// Style actions and their undo steps: named at once outside text editing,
// collected under one name (or none, when mixed) during a text edit.
#include "PanelTestSupport.h"

#include <QApplication>
#include <QTest>
#include <QTreeView>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_test::PanelTest;
using panel_test::Utf8;

class StyleActionsTest : public PanelTest {
protected:
    void SelectRowByClick(std::int32_t row) {
        ClickPane(20, row * CaptionsPane::kRowPitchPx + 20);
        ASSERT_EQ(Rows().GetCurrentIndex(), row);
    }
    // Clicks into the row's text and selects its first `count` characters.
    void SelectTextOfRow(std::int32_t row, int count) {
        ClickText(row);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Home, Qt::ControlModifier);
        for (int i = 0; i < count; ++i) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right, Qt::ShiftModifier);
        }
        QApplication::processEvents();
    }
    zelcaptioning::TextSpanAttributes FirstSpan(std::int32_t row) {
        return Rows()
            .At(row)
            ->GetCaption()
            ->GetCaptionTextParagraph(0)
            ->GetCaptionTextSpan(0)
            ->GetTextSpanStyleAttributes();
    }
};

TEST_F(StyleActionsTest, OutsideTextEditingEachActionIsANamedStep) {
    OpenDemoWithPanel();
    SelectRowByClick(2);
    const std::size_t steps = UndoHistory().GetStepCount();
    Pane().SetBold(true);
    ASSERT_EQ(UndoHistory().GetStepCount(), steps + 1);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Bold Caption Text");
    EXPECT_TRUE(FirstSpan(2).IsBolded()) << "the whole caption, as nothing is selected in it";
    Pane().SetBold(false);
    ASSERT_EQ(UndoHistory().GetStepCount(), steps + 2);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Bold Caption Text");

    Pane().SetAlignment(zelcaptioning::kTextAlignment_Left);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Align Caption Text");
    EXPECT_EQ(Rows()
                  .At(2)
                  ->GetCaption()
                  ->GetCaptionTextParagraph(0)
                  ->GetParagraphStyleAttributes()
                  .GetTextAlignment(),
              zelcaptioning::kTextAlignment_Left);
    UndoHistory().Undo();
    UndoHistory().Undo();
    EXPECT_TRUE(FirstSpan(2).IsBolded());
    UndoHistory().Undo();
    EXPECT_FALSE(FirstSpan(2).IsBolded());
}

TEST_F(StyleActionsTest, BoldThenItalicDuringOneTextEditIsOneStepWithTheEmptyName) {
    OpenDemoWithPanel();
    const std::size_t steps = UndoHistory().GetStepCount();
    SelectTextOfRow(1, 4);
    Pane().SetBold(true);
    Pane().SetItalic(true);
    EXPECT_EQ(UndoHistory().GetStepCount(), steps) << "folded into the text edit";
    EXPECT_TRUE(FirstSpan(1).IsBolded()) << "yet already in the stream";
    EXPECT_TRUE(TextWidget(1).hasFocus()) << "editing goes on where it was";

    Window().GetProjectPanel().GetTreeView().setFocus();
    Wait(250);
    ASSERT_EQ(UndoHistory().GetStepCount(), steps + 1);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "");
    const zelcaptioning::CaptionTextParagraphPtr line =
        Rows().At(1)->GetCaption()->GetCaptionTextParagraph(0);
    EXPECT_EQ(Utf8(line->GetCaptionTextSpan(0)->GetCaptionText()), "MARA");
    EXPECT_TRUE(line->GetCaptionTextSpan(0)->GetTextSpanStyleAttributes().IsItalicized());
    EXPECT_FALSE(line->GetCaptionTextSpan(1)->GetTextSpanStyleAttributes().IsBolded());
}

TEST_F(StyleActionsTest, OneKindOfActionDuringATextEditKeepsItsName) {
    OpenDemoWithPanel();
    const std::size_t steps = UndoHistory().GetStepCount();
    SelectTextOfRow(1, 4);
    Pane().SetBold(true);
    Pane().SetBold(false);
    Pane().SetBold(true);
    Window().GetProjectPanel().GetTreeView().setFocus();
    Wait(250);
    ASSERT_EQ(UndoHistory().GetStepCount(), steps + 1);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Bold Caption Text");
}

} // namespace
