// The toolbar without a mouse: Tab order, keys on the drawn controls, and
// what assistive technology reads of the toggles.
#include "PanelTestSupport.h"

#include "CaptionCommandIds.h"
#include "CaptionsToolbar.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/CommandRouting.h"

#include <QAccessible>
#include <QApplication>
#include <QMenu>
#include <QTest>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using HandlerCaptions::CaptionsToolbar;
using panel_test::PanelTest;
using panel_test::Utf8;

class ToolbarKeyboardTest : public PanelTest {
protected:
    CaptionsToolbar& Bar() { return *View().GetToolbar(); }
    QWidget* ButtonWidget(UIF::CommandID id) {
        return platform::ui::WidgetOf(*Bar().ButtonFor(id));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* focus = QApplication::focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, key, modifiers);
        QApplication::processEvents();
    }
    // The names of the controls Tab visits from the filter box until the
    // focus reaches the named control.
    std::vector<std::string> TabFromFilterBoxTo(const QString& last) {
        platform::ui::WidgetOf(Bar().FilterBox())->setFocus();
        QApplication::processEvents();
        std::vector<std::string> visited;
        for (int step = 0; step < 40; ++step) {
            QWidget* focus = QApplication::focusWidget();
            if (!focus) {
                break;
            }
            const QString name = panel_test::AccessibleName(*focus);
            visited.push_back(name.toStdString());
            if (name == last) {
                break;
            }
            QTest::keyClick(focus, Qt::Key_Tab);
            QApplication::processEvents();
        }
        return visited;
    }
    static QAccessible::State StateOf(QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->state();
    }
    zelcaptioning::TextSpanAttributes FirstSpan() {
        return Rows()
            .At(0)
            ->GetCaption()
            ->GetCaptionTextParagraph(0)
            ->GetCaptionTextSpan(0)
            ->GetTextSpanStyleAttributes();
    }
};

TEST_F(ToolbarKeyboardTest, TabVisitsTheEnabledControlsOfEachFamilyInToolbarOrder) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    const std::vector<std::string> closed{"Filter caption content",
                                          "Select caption stream",
                                          "Set display style",
                                          "Align Left",
                                          "Align Center",
                                          "Align Right",
                                          "Italicize",
                                          "Underline",
                                          "Insert Music Note",
                                          "Background Color",
                                          "Text Color",
                                          "Choose Color",
                                          "Color Presets",
                                          "Opacity",
                                          "Position Caption Block",
                                          "Set Horizontal Position",
                                          "Set Vertical Position"};
    EXPECT_EQ(TabFromFilterBoxTo("Set Vertical Position"), closed)
        << "bold and edge colour are disabled for closed captions";

    Press(Qt::Key_Tab, Qt::ShiftModifier);
    EXPECT_EQ(panel_test::AccessibleName(*QApplication::focusWidget()), "Set Horizontal Position");

    OpenTheOpenCaptions();
    ClickPane(20, 20);
    const std::vector<std::string> open{"Filter caption content",
                                        "Select caption stream",
                                        "Select Font Family",
                                        "Select font weight",
                                        "Set Font Size",
                                        "Set Text Edge Width",
                                        "Align Left",
                                        "Align Center",
                                        "Align Right",
                                        "Bold",
                                        "Italicize",
                                        "Underline",
                                        "Insert Music Note",
                                        "Background Color",
                                        "Text Color",
                                        "Edge Color",
                                        "Choose Color",
                                        "Color Presets",
                                        "Open Position Caption Block",
                                        "Set Horizontal Position (%)",
                                        "Set Vertical Position (%)"};
    EXPECT_EQ(TabFromFilterBoxTo("Set Vertical Position (%)"), open);
}

TEST_F(ToolbarKeyboardTest, TogglesReportTheirCheckedStateAndSpacePressesThem) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    QWidget* italic = ButtonWidget(HandlerCaptions::kCommand_Italicize);
    ASSERT_TRUE(FirstSpan().IsItalicized()) << "the demo's first caption is italic";
    EXPECT_TRUE(StateOf(italic).checkable);
    EXPECT_TRUE(StateOf(italic).checked);
    EXPECT_TRUE(StateOf(ButtonWidget(HandlerCaptions::kCommand_Underline)).checkable);
    EXPECT_FALSE(StateOf(ButtonWidget(HandlerCaptions::kCommand_Underline)).checked);
    EXPECT_FALSE(StateOf(ButtonWidget(HandlerCaptions::kCommand_MusicNote)).checkable)
        << "inserting a note is an action, not a state";

    italic->setFocus();
    const std::size_t steps = UndoHistory().GetStepCount();
    Press(Qt::Key_Space);
    EXPECT_FALSE(FirstSpan().IsItalicized());
    EXPECT_FALSE(StateOf(italic).checked);
    EXPECT_EQ(UndoHistory().GetStepCount(), steps + 1);
    EXPECT_EQ(QApplication::focusWidget(), italic) << "the focus stays on the button";
}

TEST_F(ToolbarKeyboardTest, ArrowsMoveTheBlockOnTheGridUntilItsEdge) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    platform::ui::WidgetOf(Bar().PositionGrid())->setFocus();
    std::int32_t column = 0;
    std::int32_t row = 0;
    Bar().PositionGrid().GetSelection(column, row);
    ASSERT_GE(column, 0);
    const std::size_t steps = UndoHistory().GetStepCount();
    for (int i = 0; i < 3; ++i) {
        Press(Qt::Key_Left);
    }
    std::int32_t leftColumn = -1;
    Bar().PositionGrid().GetSelection(leftColumn, row);
    EXPECT_EQ(leftColumn, 0);
    EXPECT_EQ(Bar().ColumnField().GetValue(), 1) << "the block stands at the left edge";
    EXPECT_EQ(UndoHistory().GetStepCount(), steps + static_cast<std::size_t>(column))
        << "one step per cell moved, none for the key that would leave the grid";
    EXPECT_EQ(Utf8(UndoHistory().GetUndoStepName()), "Move Caption Paragraph");
}

TEST_F(ToolbarKeyboardTest, ColourControlsWorkFromTheKeyboard) {
    OpenDemoWithPanel();
    ClickPane(20, 20);
    ASSERT_TRUE(UIF::SendCommand(HandlerCaptions::kCommand_TextColor));
    // Right moves the frame from the current colour to the presets; the
    // second preset is yellow.
    platform::ui::WidgetOf(Bar().ColorPicker())->setFocus();
    Press(Qt::Key_Right);
    Press(Qt::Key_Right);
    EXPECT_EQ(FirstSpan().textColor, zelcaptioning::CaptioningColor(1, 1, 1, 1))
        << "moving the frame chooses nothing";
    Press(Qt::Key_Space);
    EXPECT_EQ(FirstSpan().textColor, zelcaptioning::CaptioningColor(1, 1, 0, 1));

    bool menuShown = false;
    host_test::WhenModalLoopRuns([&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        menuShown = menu != nullptr;
        if (menu) {
            menu->close();
        }
    });
    platform::ui::WidgetOf(Bar().Swatch())->setFocus();
    Press(Qt::Key_Return);
    EXPECT_TRUE(menuShown) << "Return on the swatch offers the legal colours";
}

} // namespace
