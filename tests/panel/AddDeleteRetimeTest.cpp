// Adding after the current caption, deleting it, and retiming from the rows'
// timecodes, with the refusals shown as message boxes.
#include "PanelTestSupport.h"

#include "BE/IProject.h"
#include "MZ/Captioning.h"
#include "PlatformHost/HostAccess.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_test::PanelTest;
using panel_test::Utf8;
using zelmediatypes::TickTime;

constexpr TickTime kOneSecond{zelmediatypes::kTicksPerSecond};
const TickTime kFrame = zelmediatypes::kFrameRate_2997.FrameDuration();

class AddDeleteRetimeTest : public PanelTest {
protected:
    void SelectRowByClick(std::int32_t row) {
        ClickPane(20, row * CaptionsPane::kRowPitchPx + 20);
        ASSERT_EQ(Rows().GetCurrentIndex(), row);
    }
    void Click(zelui::controls::UI_ControlView& button) {
        QTest::mouseClick(platform::ui::WidgetOf(button), Qt::LeftButton);
        QApplication::processEvents();
    }
    // Types a timecode into a row's time control as a person does.
    void TypeTime(QWidget& control, const char* timecode) {
        QTest::mouseClick(&control, Qt::LeftButton, {}, QPoint(10, 8));
        QLineEdit* editor = control.findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->clear();
        QTest::keyClicks(editor, timecode);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }
    void MoveBegin(std::int32_t row, TickTime begin) {
        const zelcaptioning::CaptionPtr caption = Rows().At(row)->GetCaption();
        MZ::Captioning(ClosedCaptions())
            .UpdateCaption(caption, begin, caption->GetEndTime() - caption->GetBeginTime(), false,
                           zelmediatypes::kTimeDisplay_Unknown);
    }
    std::vector<std::string> MessageTexts() {
        std::vector<std::string> texts;
        for (const auto& record : messageBoxes->GetRecords()) {
            texts.push_back(Utf8(record.text));
        }
        return texts;
    }
};

TEST_F(AddDeleteRetimeTest, AddWithoutARowMakesAOneSecondCaptionAtTheStart) {
    OpenDemoWithPanel();
    const auto plain = Clip(host_test::kPlainClip);
    const auto stream = Window().GetDocument().GetProject()->AddCaptioningStream(
        plain, zelcaptioning::kStreamFormat_CEA608, BE::UndoMode::kAsUndoStep);
    SelectClip(host_test::kPlainClip);
    ASSERT_EQ(Pane().GetStream(), stream);
    EXPECT_TRUE(View().GetDeleteButton()->IsDisabled()) << "nothing to delete";
    Click(*View().GetAddButton());
    ASSERT_EQ(stream->GetCaptionCount(), 1u);
    EXPECT_EQ(stream->GetCaption(0)->GetBeginTime(), TickTime{});
    EXPECT_EQ(stream->GetCaption(0)->GetEndTime(), kOneSecond);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Add Caption");
}

TEST_F(AddDeleteRetimeTest, AddNeedsOneSecondBeforeTheNextCaption) {
    OpenDemoWithPanel();
    const TickTime end = Rows().At(3)->GetCaption()->GetEndTime();
    MoveBegin(4, end + kOneSecond - TickTime{1});
    SelectRowByClick(3);
    Click(*View().GetAddButton());
    EXPECT_EQ(ClosedCaptions()->GetCaptionCount(), 30u);
    EXPECT_EQ(MessageTexts(),
              std::vector<std::string>{
                  "There is not enough time available to insert a new caption between the "
                  "current caption and the next caption in the list."});
    EXPECT_EQ(Utf8(messageBoxes->GetRecords().front().title), "Closed Captioning");

    MoveBegin(4, end + kOneSecond);
    Click(*View().GetAddButton());
    ASSERT_EQ(ClosedCaptions()->GetCaptionCount(), 31u);
    const zelcaptioning::CaptionPtr added = Rows().At(4)->GetCaption();
    EXPECT_EQ(Rows().GetCurrentIndex(), 4);
    EXPECT_EQ(added->GetBeginTime(), end);
    EXPECT_EQ(added->GetEndTime(), end + kOneSecond);
    // It keeps the last line's last span, emptied, with its style (yellow text).
    ASSERT_EQ(added->GetNumParagraphs(), 1u);
    const auto line = added->GetCaptionTextParagraph(0);
    ASSERT_EQ(line->GetNumSpans(), 1u);
    EXPECT_EQ(Utf8(line->GetCaptionTextSpan(0)->GetCaptionText()), "");
    EXPECT_EQ(line->GetCaptionTextSpan(0)->GetTextSpanStyleAttributes().textColor,
              Rows()
                  .At(3)
                  ->GetCaption()
                  ->GetCaptionTextParagraph(1)
                  ->GetCaptionTextSpan(0)
                  ->GetTextSpanStyleAttributes()
                  .textColor);
}

TEST_F(AddDeleteRetimeTest, DeleteRemovesTheCurrentCaptionAsOneStep) {
    OpenDemoWithPanel();
    SelectRowByClick(2);
    const zelcaptioning::CaptionPtr next = Rows().At(3)->GetCaption();
    Click(*View().GetDeleteButton());
    EXPECT_EQ(ClosedCaptions()->GetCaptionCount(), 29u);
    EXPECT_EQ(Rows().GetCount(), 29);
    EXPECT_EQ(Rows().GetCurrentCaption(), next);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Delete Caption");
    UndoHistory().Undo();
    EXPECT_EQ(Rows().GetCount(), 30);
}

TEST_F(AddDeleteRetimeTest, RetimingOntoTheNextBeginIsRefusedAndBothTimesComeBack) {
    OpenDemoWithPanel();
    const zelcaptioning::CaptionPtr first = Rows().At(0)->GetCaption();
    const TickTime begin = first->GetBeginTime();
    const TickTime end = first->GetEndTime();
    TypeTime(OutTimeWidget(0), "00:00:04;15"); // the next caption's begin
    ASSERT_EQ(MessageTexts().size(), 1u);
    EXPECT_NE(MessageTexts()[0].find("cannot be moved because another caption"), std::string::npos);
    Wait(300);
    EXPECT_EQ(first->GetBeginTime(), begin);
    EXPECT_EQ(first->GetEndTime(), end);
    EXPECT_EQ(Utf8(Rows().At(0)->GetOutControl()->GetInlineEditText()), "00:00:04;00");
    EXPECT_EQ(Utf8(Rows().At(0)->GetInControl()->GetInlineEditText()), "00:00:01;00");
}

TEST_F(AddDeleteRetimeTest, RetimingOntoThePreviousEndIsAccepted) {
    OpenDemoWithPanel();
    const zelcaptioning::CaptionPtr second = Rows().At(1)->GetCaption();
    const TickTime previousEnd = Rows().At(0)->GetCaption()->GetEndTime();
    const TickTime end = second->GetEndTime();
    TypeTime(InTimeWidget(1), "00:00:04;00");
    Wait(300);
    EXPECT_TRUE(messageBoxes->GetRecords().empty());
    EXPECT_EQ(second->GetBeginTime(), previousEnd);
    EXPECT_EQ(second->GetEndTime(), end);
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Change Caption Times");
}

TEST_F(AddDeleteRetimeTest, AnOutTimeUnderOneFrameBecomesOneFrame) {
    OpenDemoWithPanel();
    const zelcaptioning::CaptionPtr first = Rows().At(0)->GetCaption();
    TypeTime(OutTimeWidget(0), "00:00:00;00");
    Wait(300);
    EXPECT_EQ(first->GetBeginTime(), TickTime{});
    EXPECT_EQ(first->GetEndTime(), kFrame);
    EXPECT_EQ(Rows().At(0)->GetCaption(), first);
}

} // namespace
