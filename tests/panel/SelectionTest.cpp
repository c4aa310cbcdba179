// Moving the selection with keys and the mouse, and scrolling in whole rows.
#include "PanelTestSupport.h"

#include "MZ/CaptionMessages.h"
#include "MZ/Stations.h"

#include <QApplication>
#include <QDockWidget>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using HandlerCaptions::CaptionsPane;
using panel_test::PanelTest;

class SelectionTest : public PanelTest {
protected:
    void Press(Qt::Key key) {
        QTest::keyClick(&PaneWidget(), key);
        QApplication::processEvents();
    }
    std::int32_t VisibleRows() {
        return (PaneWidget().height() + CaptionsPane::kRowPitchPx - 1) / CaptionsPane::kRowPitchPx;
    }
};

TEST_F(SelectionTest, TheKeyTableMovesTheSelectionWithinTheRows) {
    OpenDemoWithPanel();
    host_test::MessageLog selections(MZ::kStation_CaptionSelection);
    ClickPane(300, 10);
    ASSERT_EQ(Rows().GetCurrentIndex(), 0);
    const std::int32_t page = VisibleRows();
    ASSERT_GE(page, 2);

    Press(Qt::Key_Down);
    EXPECT_EQ(Rows().GetCurrentIndex(), 1);
    Press(Qt::Key_Up);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0);
    Press(Qt::Key_Up);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0) << "clamped at the first row";
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Rows().GetCurrentIndex(), page);
    Press(Qt::Key_PageUp);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0);
    Press(Qt::Key_End);
    EXPECT_EQ(Rows().GetCurrentIndex(), 29);
    // The last row is scrolled into view, aligned to the row pitch.
    EXPECT_EQ(Pane().GetScrollOffset() % CaptionsPane::kRowPitchPx, 0u);
    EXPECT_LE(Pane().GetFirstVisibleIndex(), 29);
    EXPECT_GE(Pane().GetLastVisibleIndex(), 29);

    const std::size_t posted = selections.Of<MZ::CaptionSelectedMessage>().size();
    Press(Qt::Key_PageDown);
    EXPECT_EQ(Rows().GetCurrentIndex(), 29);
    EXPECT_EQ(selections.Of<MZ::CaptionSelectedMessage>().size(), posted)
        << "no second selection message for the same row";
    Press(Qt::Key_Home);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0);
    Press(Qt::Key_Left);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0) << "keys outside the table change nothing";

    const auto announced = selections.Of<MZ::CaptionSelectedMessage>();
    ASSERT_FALSE(announced.empty());
    EXPECT_EQ(announced.back()->GetCaption(), Rows().At(0)->GetCaption());
    EXPECT_EQ(announced.back()->GetMasterClip(), Clip(host_test::kCaptionedClip));
}

TEST_F(SelectionTest, TheSelectionMessageIsPostedNotBroadcast) {
    OpenDemoWithPanel();
    host_test::MessageLog selections(MZ::kStation_CaptionSelection);
    QTest::mouseClick(&PaneWidget(), Qt::LeftButton, {}, QPoint(300, 80));
    EXPECT_EQ(Rows().GetCurrentIndex(), 1);
    EXPECT_TRUE(selections.entries.empty()) << "delivered on a later turn of the event loop";
    QApplication::processEvents();
    ASSERT_EQ(selections.Of<MZ::CaptionSelectedMessage>().size(), 1u);
}

TEST_F(SelectionTest, ClicksBelowTheLastRowChangeNothing) {
    OpenDemoWithPanel();
    Pane().SetFilterText(u"Thirty-one");
    ASSERT_EQ(Rows().GetCount(), 1);
    ClickPane(300, 10);
    ASSERT_EQ(Rows().GetCurrentIndex(), 0);
    ClickPane(300, CaptionsPane::kRowPitchPx + 5);
    EXPECT_EQ(Rows().GetCurrentIndex(), 0);
}

TEST_F(SelectionTest, ScrollingMovesByWholeRows) {
    OpenDemoWithPanel();
    QWidget* firstRowText = &TextWidget(0);
    const std::pair<std::uint32_t, std::int32_t> offsets[] = {{0, 0}, {74, 0}, {75, 1}, {149, 1}};
    for (const auto& [offset, first] : offsets) {
        Pane().SetScrollOffset(offset);
        EXPECT_EQ(Pane().GetFirstVisibleIndex(), first) << "offset " << offset;
        EXPECT_EQ(Pane().GetScrollOffset() % CaptionsPane::kRowPitchPx, 0u);
    }
    // Only the rows in sight are laid out, with controls the others gave back.
    Pane().SetScrollOffset(10 * CaptionsPane::kRowPitchPx);
    EXPECT_EQ(Pane().GetFirstVisibleIndex(), 10);
    EXPECT_TRUE(Rows().At(10)->HasControls());
    EXPECT_TRUE(TextWidget(10).isVisible());
    bool reused = false;
    for (std::int32_t i = 10; i <= Pane().GetLastVisibleIndex(); ++i) {
        reused |= &TextWidget(i) == firstRowText;
    }
    EXPECT_TRUE(reused);
    EXPECT_FALSE(Rows().At(0)->HasControls()) << "rows out of sight give their controls back";

    // A wheel notch away from the user scrolls one row back.
    QWheelEvent wheel(QPointF(100, 40), PaneWidget().mapToGlobal(QPointF(100, 40)), QPoint(),
                      QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&PaneWidget(), &wheel);
    EXPECT_EQ(Pane().GetFirstVisibleIndex(), 9);
}

// Counts the paint events a widget receives.
class PaintCounter : public QObject {
public:
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        paints += event->type() == QEvent::Paint;
        return false;
    }
};

TEST_F(SelectionTest, AWheelTurnThatCannotScrollRedrawsNothing) {
    OpenDemoWithPanel();
    PaintCounter counter;
    PaneWidget().installEventFilter(&counter);
    // Thumbnails arrive and are painted first.
    for (int quiet = 0; quiet < 50; ++quiet) {
        counter.paints = 0;
        Wait(100);
        if (counter.paints == 0) {
            break;
        }
    }
    ASSERT_EQ(counter.paints, 0) << "the pane never settled";
    QWheelEvent up(QPointF(100, 40), PaneWidget().mapToGlobal(QPointF(100, 40)), QPoint(),
                   QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&PaneWidget(), &up);
    Wait(20);
    EXPECT_EQ(Pane().GetScrollOffset(), 0u);
    EXPECT_EQ(counter.paints, 0) << "at the top, a turn towards the top changes nothing";

    QWheelEvent down(QPointF(100, 40), PaneWidget().mapToGlobal(QPointF(100, 40)), QPoint(),
                     QPoint(0, -120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&PaneWidget(), &down);
    Wait(20);
    EXPECT_EQ(Pane().GetFirstVisibleIndex(), 1);
    EXPECT_GT(counter.paints, 0);
    PaneWidget().removeEventFilter(&counter);
}

TEST_F(SelectionTest, GrowingTheViewBringsTheScrollBackToAWholeRow) {
    OpenDemoWithPanel();
    const std::int32_t last = Rows().GetCount() - 1;
    Pane().SelectRow(last, CaptionsPane::kSelectNotify_Keyboard);
    QApplication::processEvents();
    const std::uint32_t bottom = Pane().GetScrollOffset();
    ASSERT_GT(bottom, 0u);
    EXPECT_EQ(Pane().GetLastVisibleIndex(), last);

    // Room for ten rows: the list can no longer scroll as far.
    QDockWidget* dock = DockTitled("Captions");
    ASSERT_NE(dock, nullptr);
    Window().GetMainWindow().resize(1280, 1400);
    Window().GetMainWindow().resizeDocks({dock}, {52 + 7 + 10 * 75 + 40 + 30}, Qt::Vertical);
    QApplication::processEvents();
    EXPECT_LT(Pane().GetScrollOffset(), bottom);
    EXPECT_EQ(Pane().GetScrollOffset() % CaptionsPane::kRowPitchPx, 0u);
    EXPECT_EQ(Pane().GetLastVisibleIndex(), last) << "the last row stays in sight";
}

} // namespace
