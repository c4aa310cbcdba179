// Toolbar controls that set values of the selection: block position by
// column and row, colours from the picker, opacity.
#include "PanelTestSupport.h"

#include "CaptionCommandIds.h"
#include "CaptionsToolbar.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/CommandRouting.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsToolbar;
using panel_test::PanelTest;
using panel_test::Utf8;

class ToolbarValuesTest : public PanelTest {
protected:
    CaptionsToolbar& Bar() { return *View().GetToolbar(); }
    void Type(zelui::controls::UI_ControlView& field, const char* value) {
        QWidget* widget = platform::ui::WidgetOf(field);
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(5, 8));
        auto* editor = widget->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClicks(editor, value);
        QTest::keyClick(editor, Qt::Key_Return);
        QApplication::processEvents();
    }
    zelcaptioning::Position FirstLine(std::int32_t row) {
        return Rows().At(row)->GetCaption()->GetCaptionTextParagraph(0)->GetCaptionPosition();
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

TEST_F(ToolbarValuesTest, ColumnAndRowFieldsMoveTheBlockAndTheGridFollows) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    // The fields show the block's column and row of the 32 by 15 grid, from 1.
    const zelcaptioning::Position at = FirstLine(0);
    const auto column = zelcaptioning::ValueWithScale(at.GetX(), 32, true) + 1;
    EXPECT_EQ(Bar().ColumnField().GetValue(), column);
    EXPECT_EQ(Bar().RowField().GetValue(), zelcaptioning::ValueWithScale(at.GetY(), 15, true) + 1);
    const std::size_t steps = UndoHistory().GetStepCount();
    const std::string twoRight = std::to_string(column + 2);
    Type(Bar().ColumnField(), twoRight.c_str());
    EXPECT_EQ(FirstLine(0).GetX(), at.GetX() + zelcaptioning::Rational(2, 32));
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Move Caption Paragraph");
    Type(Bar().ColumnField(), twoRight.c_str());
    EXPECT_EQ(UndoHistory().GetStepCount(), steps + 1) << "the same value again does nothing";

    // The grid's top-left cell takes the block to the first column and row.
    QWidget* grid = platform::ui::WidgetOf(Bar().PositionGrid());
    QTest::mouseClick(grid, Qt::LeftButton, {}, QPoint(1, 1));
    QApplication::processEvents();
    EXPECT_EQ(Bar().ColumnField().GetValue(), 1);
    EXPECT_EQ(Bar().RowField().GetValue(), 1);
    EXPECT_EQ(FirstLine(0).GetX(), zelcaptioning::Rational(0));
    EXPECT_EQ(FirstLine(0).GetY(), zelcaptioning::Rational(0));
}

TEST_F(ToolbarValuesTest, APickedColourGoesToTheColourTarget) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_TextColor));
    QWidget* picker = platform::ui::WidgetOf(Bar().ColorPicker());
    ASSERT_NE(picker, nullptr);
    // The second preset, right of the current colour's swatch, is yellow.
    const int size = picker->height() - 6;
    QTest::mouseClick(picker, Qt::LeftButton, {},
                      QPoint(picker->height() + 4 + size + 2 + size / 2, picker->height() / 2));
    QApplication::processEvents();
    EXPECT_EQ(FirstSpan(0).textColor, zelcaptioning::CaptioningColor(1, 1, 0, 1));
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Change Caption Color");

    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_BackgroundColor));
    Type(Bar().OpacityField(), "50");
    EXPECT_FLOAT_EQ(FirstSpan(0).backgroundColor.Alpha(), 0.5f);
}

TEST_F(ToolbarValuesTest, TheSwatchOffersTheColoursTheFormatAllows) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_TextColor));
    std::vector<std::string> offered;
    host_test::WhenModalLoopRuns([&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (QAction* action : menu->actions()) {
            offered.push_back(action->text().toStdString());
        }
        for (QAction* action : menu->actions()) {
            if (action->text() == QStringLiteral("Cyan")) {
                menu->setActiveAction(action);
            }
        }
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(platform::ui::WidgetOf(Bar().Swatch()), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(offered.size(), 7u) << "the seven text colours of CEA-608";
    EXPECT_EQ(FirstSpan(0).textColor, zelcaptioning::CaptioningColor(0, 1, 1, 1));
}

TEST_F(ToolbarValuesTest, RaisingTheEdgeOpacityFromNothingGivesTheEdgeAWidth) {
    OpenDemoWithPanel();
    const auto clip = Clip(host_test::kCaptionedClip);
    Pane().ShowStream(clip, clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions));
    // A caption without an edge.
    std::int32_t row = -1;
    for (std::int32_t i = 0; i < Rows().GetCount() && row < 0; ++i) {
        const auto span = FirstSpan(i);
        if (span.edgeWidth == 0.0f && span.edgeColor.Alpha() == 0.0f) {
            row = i;
        }
    }
    ASSERT_GE(row, 0) << "the demo has an open caption without an edge";
    Pane().SetScrollOffset(
        static_cast<std::uint32_t>(row * HandlerCaptions::CaptionsPane::kRowPitchPx));
    ClickPane(20, 20);
    ASSERT_EQ(Rows().GetCurrentIndex(), row);
    const float size = FirstSpan(row).GetFontSize() > 0 ? FirstSpan(row).GetFontSize() : 20.0f;
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_EdgeColor));
    Type(Bar().OpacityField(), "100");
    EXPECT_FLOAT_EQ(FirstSpan(row).edgeWidth, size / 10.0f);
    EXPECT_FLOAT_EQ(FirstSpan(row).edgeColor.Alpha(), 1.0f);
}

TEST_F(ToolbarValuesTest, AChosenWeightSetsBoldAndItalicAsItsNameSays) {
    OpenDemoWithPanel();
    const auto clip = Clip(host_test::kCaptionedClip);
    Pane().ShowStream(clip, clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions));
    ClickPane(20, 20);
    // A family whose faces are named with the italic word.
    auto* families = qobject_cast<QComboBox*>(platform::ui::WidgetOf(Bar().FontFamilyPopup()));
    ASSERT_NE(families, nullptr);
    const int serif = families->findText(QStringLiteral("DejaVu Serif"));
    ASSERT_GE(serif, 0);
    families->setCurrentIndex(serif);
    families->activated(serif);
    QApplication::processEvents();
    auto* weights = qobject_cast<QComboBox*>(platform::ui::WidgetOf(Bar().FontWeightPopup()));
    ASSERT_NE(weights, nullptr);
    const struct {
        const char* weight;
        bool bold;
        bool italic;
    } choices[] = {{"Bold Italic", true, true},
                   {"Book", false, false},
                   {"Italic", false, true},
                   {"Bold", true, false}};
    for (const auto& choice : choices) {
        SCOPED_TRACE(choice.weight);
        const int item = weights->findText(QString::fromUtf8(choice.weight));
        ASSERT_GE(item, 0) << "the selection's family lists its styles";
        weights->setCurrentIndex(item);
        weights->activated(item);
        QApplication::processEvents();
        EXPECT_EQ(FirstSpan(0).IsBolded(), choice.bold);
        EXPECT_EQ(FirstSpan(0).IsItalicized(), choice.italic);
        EXPECT_EQ(Bar().ButtonFor(HandlerCaptions::kCommand_Bold)->IsPressed(), choice.bold);
        EXPECT_EQ(Bar().ButtonFor(HandlerCaptions::kCommand_Italicize)->IsPressed(), choice.italic);
    }
}

TEST_F(ToolbarValuesTest, OpenXAndYFieldsPlaceTheBlockWithinThePicture) {
    OpenDemoWithPanel();
    const auto clip = Clip(host_test::kCaptionedClip);
    Pane().ShowStream(clip, clip->FindCaptioningStream(zelcaptioning::kStreamFormat_OpenCaptions));
    ClickPane(20, 20);
    Type(Bar().XPercentField(), "25");
    EXPECT_EQ(Bar().XPercentField().GetValue(), 25);
    const zelcaptioning::Position quarter = FirstLine(0);
    Type(Bar().XPercentField(), "150");
    EXPECT_EQ(Bar().XPercentField().GetValue(), 100) << "the field keeps to 0..100";
    Type(Bar().YPercentField(), "-20");
    EXPECT_EQ(Bar().YPercentField().GetValue(), 0);
    const zelcaptioning::Position corner = FirstLine(0);
    EXPECT_GT(corner.GetX(), quarter.GetX());
    EXPECT_LE(corner.GetX(), zelcaptioning::Rational(1));
    EXPECT_GE(corner.GetY(), zelcaptioning::Rational(0));
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Move Open Caption Paragraph");
}

} // namespace
