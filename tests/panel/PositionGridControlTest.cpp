// The position grid in a tab view of the host window, driven with real mouse
// events: the cell under a first-button press is selected and reported once;
// anything else leaves the selection and the listeners alone.
#include "PositionGridControl.h"

#include "HostTestSupport.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/Command.h"
#include "UIF/TabView.h"
#include "UIF/Workspace.h"
#include "caption_editor/AnchorGrid.h"
#include "caption_editor/StyleSummary.h"

#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QtTest/QTest>
#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

using HandlerCaptions::PositionGridControl;
using zelui::ui::UI_Color;

constexpr const char16_t* kHandlerName = u"positionGridTest";

// Makes a plain tab view to hold the control.
class PlainTabViewCreator : public UIF::TabViewCreator {
public:
    PlainTabViewCreator() {
        UIF::Workspace::Instance()->RegisterTabViewCreator(kHandlerName, this);
    }

    UIF::TabView* CreateTabView(UIF::WorkspaceFrame* frame) override {
        view = std::make_unique<UIF::TabView>(UIF::ApplicationCommander());
        view->Create(kHandlerName, u"$$$/Corvala/Test/PositionGrid=Position Grid", frame, true);
        return view.get();
    }

    std::unique_ptr<UIF::TabView> view;
};

class PositionGridControlTest : public host_test::HostWindowTest {
protected:
    // Wider and taller than the nine cells (19 pixels), so that a press can
    // land inside the control beyond the third cell.
    static constexpr float kLeft = 40.0f;
    static constexpr float kTop = 30.0f;
    static constexpr float kSize = 24.0f;

    void SetUp() override {
        HostWindowTest::SetUp();
        creator_ = std::make_unique<PlainTabViewCreator>();
        UIF::TabView* view = UIF::Workspace::Instance()->CreateOrReanimateTabView(kHandlerName, {});
        ASSERT_NE(view, nullptr);
        grid = new PositionGridControl();
        grid->SetBounds({kLeft, kTop, kLeft + kSize, kTop + kSize});
        view->AddControl(*grid);
        grid->NotifyWhenChanged(
            [this](const zelui::controls::UI_ControlChangedMessage&) { ++notifications; });
        widget = platform::ui::WidgetOf(*grid);
        ASSERT_NE(widget, nullptr);
    }

    void TearDown() override {
        grid.reset();
        creator_.reset();
        HostWindowTest::TearDown();
    }

    std::pair<int, int> Selection() const {
        int column = 0;
        int row = 0;
        grid->GetSelection(column, row);
        return {column, row};
    }

    // A press and release at the point of the control's widget.
    void Click(int x, int y, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(widget, button, Qt::NoModifier, QPoint(x, y));
    }

    void MoveOver(int x, int y) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, y),
                         QPointF(widget->mapToGlobal(QPoint(x, y))), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(widget, &move);
    }

    UI_Color DrawnAt(int x, int y) const {
        const QColor color = widget->grab().toImage().pixelColor(x, y);
        return UI_Color(color.red(), color.green(), color.blue(), 255);
    }

    boost::intrusive_ptr<PositionGridControl> grid;
    QWidget* widget = nullptr;
    int notifications = 0;

private:
    std::unique_ptr<PlainTabViewCreator> creator_;
};

TEST_F(PositionGridControlTest, PressSelectsTheCellUnderItAndNotifiesOnce) {
    Click(8, 15);
    EXPECT_EQ(Selection(), std::make_pair(1, 2));
    EXPECT_EQ(caption_editor::AnchorFromCell(Selection().first, Selection().second),
              zelcaptioning::kAnchorID_BottomCenter);
    EXPECT_EQ(notifications, 1) << "the release after the press is not a second change";

    // The gap after a cell belongs to that cell.
    for (const auto& [x, column] : {std::pair{5, 0}, {6, 0}, {7, 1}}) {
        Click(x, 0);
        EXPECT_EQ(Selection(), std::make_pair(column, 0)) << "x " << x;
    }
    EXPECT_EQ(notifications, 4);

    // Inside the control but past the third cell: no anchor, still reported.
    Click(22, 1);
    EXPECT_EQ(Selection(), std::make_pair(3, 0));
    EXPECT_EQ(caption_editor::AnchorFromCell(Selection().first, Selection().second),
              zelcaptioning::kAnchorID_None);
    EXPECT_EQ(notifications, 5);
}

TEST_F(PositionGridControlTest, PressOutsideTheBoundsClearsTheSelectionSilently) {
    for (const QPoint outside : {QPoint(-1, 5), QPoint(5, -1), QPoint(24, 5), QPoint(5, 24)}) {
        grid->SetSelection(1, 1);
        Click(outside.x(), outside.y());
        EXPECT_EQ(Selection(), std::make_pair(-1, -1)) << outside.x() << ", " << outside.y();
    }
    EXPECT_EQ(notifications, 0);
}

TEST_F(PositionGridControlTest, OtherButtonsAndADisabledControlChangeNothing) {
    grid->SetSelection(0, 0);
    Click(8, 15, Qt::RightButton);
    Click(8, 15, Qt::MiddleButton);
    EXPECT_EQ(Selection(), std::make_pair(0, 0));

    grid->SetDisabled(true);
    Click(8, 15);
    EXPECT_EQ(Selection(), std::make_pair(0, 0));
    EXPECT_EQ(notifications, 0);
}

TEST_F(PositionGridControlTest, SelectionSetFromCodeSendsNothing) {
    grid->SetSelection(2, 0);
    EXPECT_EQ(Selection(), std::make_pair(2, 0));

    grid->SetSelectionFromAnchor(5);
    EXPECT_EQ(Selection(), std::make_pair(2, 1));
    // The free anchor, none and mixed paragraphs show the centre cell.
    for (const zelcaptioning::AnchorID anchor :
         {zelcaptioning::kAnchorID_Free, zelcaptioning::kAnchorID_None,
          caption_editor::StyleSummary::kAnchorMixed}) {
        grid->SetSelection(0, 0);
        grid->SetSelectionFromAnchor(anchor);
        EXPECT_EQ(Selection(), std::make_pair(1, 1)) << "anchor " << anchor;
    }
    EXPECT_EQ(notifications, 0);
}

TEST_F(PositionGridControlTest, SelectedCellIsFilledAndTheOthersAreOutlines) {
    const UI_Color cell = zelui::ui::GetColor(zelui::ui::kUIColor_GridCell);
    grid->SetSelection(1, 2);
    EXPECT_EQ(DrawnAt(9, 16), cell) << "centre of the selected cell";
    EXPECT_NE(DrawnAt(2, 2), cell) << "centre of an unselected cell";
    EXPECT_EQ(DrawnAt(0, 0), cell) << "corner of an unselected cell";
    EXPECT_EQ(DrawnAt(4, 4), cell) << "opposite corner of an unselected cell";
    EXPECT_EQ(DrawnAt(5, 2), cell) << "line joining the first two cells of the top row";
    EXPECT_EQ(DrawnAt(2, 5), cell) << "line joining the first two cells of the left column";
    EXPECT_NE(DrawnAt(19, 2), cell) << "nothing joins the last cell of a row to the right";

    grid->SetDisabled(true);
    EXPECT_EQ(DrawnAt(9, 16), zelui::ui::GetColor(zelui::ui::kUIColor_GridCellDisabled));
}

TEST_F(PositionGridControlTest, CursorIsTheControlsOwnOnlyWhileEnabled) {
    MoveOver(3, 3);
    EXPECT_EQ(widget->cursor().shape(), Qt::ArrowCursor);

    grid->SetCursor(zelui::ui::kCursor_PointingHand);
    MoveOver(4, 4);
    EXPECT_EQ(widget->cursor().shape(), Qt::PointingHandCursor);

    grid->SetDisabled(true);
    MoveOver(5, 5);
    EXPECT_EQ(widget->cursor().shape(), Qt::ArrowCursor);
}

} // namespace
