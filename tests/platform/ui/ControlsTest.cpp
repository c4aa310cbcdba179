#include "PlatformHost/HostAccess.h"
#include "UIF/SubView.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "zelui/controls/UI_HotTextNumber.h"
#include "zelui/controls/UI_InteractiveControlView.h"
#include "zelui/controls/UI_Popup.h"
#include "zelui/controls/UI_PopupMenu.h"
#include "zelui/controls/UI_SearchBox.h"
#include "zelui/controls/UI_StaticText.h"
#include "zelui/controls/UI_Swatch.h"
#include "zelui/controls/UI_TextButton.h"
#include "zelui/drawbot/Drawbot.h"
#include "zelui/ui/UI_Cursor.h"
#include "zelui/ui/UI_Events.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QtTest/QTest>
#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <vector>

namespace platform_ui_test {
namespace {

using namespace zelui::controls;

class ControlsTest : public testing::Test {
protected:
    ControlsTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"controls", {});
        view = creator.view.get();
        ShowWorkspace();
    }

    template <typename C> void Place(C& control, const UI_Rect& bounds) {
        control.SetBounds(bounds);
        view->AddControl(control);
    }

    // Records every notification of a control.
    struct Notifications {
        int changed = 0;
        std::vector<UI_InteractiveChange> interactive;
        void Watch(UI_ControlView& control) {
            control.NotifyWhenChanged([this](const UI_ControlChangedMessage&) { ++changed; });
        }
        void Watch(UI_InteractiveControlView& control) {
            Watch(static_cast<UI_ControlView&>(control));
            control.NotifyWhenChangedInteractively(
                [this](const UI_InteractiveControlChangedMessage& message) {
                    interactive.push_back(message.GetChangeMessage());
                });
        }
    };

    RecordingCreator creator{u"controls"};
    UIF::TabView* view = nullptr;
};

TEST_F(ControlsTest, HotTextNumberScrubReportsBeginIntermediateAndOneFinal) {
    boost::intrusive_ptr<UI_HotTextNumber> field(new UI_HotTextNumber());
    field->SetMinimum(6);
    field->SetMaximum(144);
    field->SetValue(20);
    Place(*field, {319, 3, 359, 22});
    Notifications seen;
    seen.Watch(*field);

    Drag(*platform::ui::WidgetOf(*field), QPoint(5, 8), QPoint(25, 8));

    EXPECT_EQ(field->GetValue(), 40.0);
    ASSERT_GE(seen.interactive.size(), 3u);
    EXPECT_EQ(seen.interactive.front(), kInteractiveChange_Begin);
    EXPECT_EQ(seen.interactive[1], kInteractiveChange_Intermediate);
    EXPECT_EQ(seen.interactive.back(), kInteractiveChange_Final);
    EXPECT_EQ(
        std::count(seen.interactive.begin(), seen.interactive.end(), kInteractiveChange_Final), 1);
    EXPECT_EQ(seen.changed, 1);

    // Scrubbing stops at the limits.
    Drag(*platform::ui::WidgetOf(*field), QPoint(5, 8), QPoint(-300, 8));
    EXPECT_EQ(field->GetValue(), 6.0);
}

TEST_F(ControlsTest, HotTextNumberTypedValueIsRoundedClampedAndFinal) {
    boost::intrusive_ptr<UI_HotTextNumber> field(new UI_HotTextNumber());
    field->SetDecimalPlaces(1);
    field->SetMaximum(24);
    Place(*field, {409, 3, 449, 22});
    Notifications seen;
    seen.Watch(*field);
    QWidget* widget = platform::ui::WidgetOf(*field);

    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
    ASSERT_TRUE(field->IsEditing());
    auto* editor = widget->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "3.46");
    QTest::keyClick(editor, Qt::Key_Return);

    EXPECT_FALSE(field->IsEditing());
    EXPECT_DOUBLE_EQ(field->GetValue(), 3.5);
    EXPECT_EQ(field->GetText(), u"3.5");
    EXPECT_EQ(seen.interactive, std::vector<UI_InteractiveChange>{kInteractiveChange_Final});
    EXPECT_EQ(seen.changed, 1);

    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
    editor = widget->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "99");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_DOUBLE_EQ(field->GetValue(), 24.0);
}

TEST_F(ControlsTest, HotTextNumberEscapeCancelsWithoutNotifying) {
    boost::intrusive_ptr<UI_HotTextNumber> field(new UI_HotTextNumber());
    field->SetValue(7);
    Place(*field, {0, 0, 40, 19});
    Notifications seen;
    seen.Watch(*field);
    QWidget* widget = platform::ui::WidgetOf(*field);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(5, 8));
    auto* editor = widget->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "55");
    QTest::keyClick(editor, Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_FALSE(field->IsEditing());
    EXPECT_EQ(field->GetValue(), 7.0);
    EXPECT_TRUE(seen.interactive.empty());
    EXPECT_EQ(seen.changed, 0);
}

TEST_F(ControlsTest, SearchBoxReportsTypingAsIntermediateAndReturnAsFinal) {
    boost::intrusive_ptr<UI_SearchBox> box(new UI_SearchBox());
    Place(*box, {3, 3, 170, 23});
    Notifications seen;
    seen.Watch(*box);
    auto* edit = qobject_cast<QLineEdit*>(platform::ui::WidgetOf(*box));
    ASSERT_NE(edit, nullptr);

    EXPECT_TRUE(box->HandleControlRequest(kControlRequest_Activate));
    EXPECT_TRUE(box->HasFocus());
    QTest::keyClicks(edit, "ab");
    EXPECT_EQ(box->GetText(), u"ab");
    EXPECT_EQ(seen.interactive,
              (std::vector<UI_InteractiveChange>{kInteractiveChange_Intermediate,
                                                 kInteractiveChange_Intermediate}));
    EXPECT_EQ(seen.changed, 0);
    QTest::keyClick(edit, Qt::Key_Return);
    EXPECT_EQ(seen.interactive.back(), kInteractiveChange_Final);
    EXPECT_EQ(seen.changed, 1);

    // Emptying the field is a final change; setting the text is no change at all.
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(seen.changed, 2);
    box->SetText(u"quiet");
    EXPECT_EQ(seen.changed, 2);
    EXPECT_EQ(box->GetText(), u"quiet");
}

TEST_F(ControlsTest, PopupNotifiesOnlyWhenTheUserChooses) {
    boost::intrusive_ptr<UI_Popup> popup(new UI_Popup());
    Place(*popup, {226, 3, 375, 22});
    popup->SetItemCheckStyle(true);
    popup->AddItem(u"$$$/Corvala/Test/First=First");
    popup->AddItem(u"Second");
    Notifications seen;
    seen.Watch(*popup);
    EXPECT_EQ(popup->GetValue(), -1);
    EXPECT_EQ(popup->GetValueString(), u"");

    popup->SetValue(1);
    EXPECT_EQ(popup->GetValueString(), u"Second");
    EXPECT_EQ(seen.changed, 0);

    auto* combo = qobject_cast<QComboBox*>(platform::ui::WidgetOf(*popup));
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(combo->itemData(1, Qt::CheckStateRole).toInt(), Qt::Checked);
    combo->setFocus();
    QTest::keyClick(combo, Qt::Key_Up);
    EXPECT_EQ(seen.changed, 1);
    EXPECT_EQ(popup->GetValue(), 0);
    EXPECT_EQ(popup->GetValueString(), u"First");
    EXPECT_EQ(combo->itemData(0, Qt::CheckStateRole).toInt(), Qt::Checked);

    popup->SetValue(5);
    EXPECT_EQ(popup->GetValue(), -1);
    popup->RemoveAllItems();
    EXPECT_EQ(popup->GetItemCount(), 0);
}

TEST_F(ControlsTest, DisabledControlsTakeNoInput) {
    boost::intrusive_ptr<UI_TextButton> button(new UI_TextButton(u"$$$/Corvala/Test/Add=+"));
    Place(*button, {10, 40, 98, 58});
    Notifications seen;
    seen.Watch(*button);
    auto* push = qobject_cast<QPushButton*>(platform::ui::WidgetOf(*button));
    ASSERT_NE(push, nullptr);
    EXPECT_EQ(button->GetText(), u"+");

    QTest::mouseClick(push, Qt::LeftButton);
    EXPECT_EQ(seen.changed, 1);
    button->SetDisabled(true);
    EXPECT_TRUE(button->IsDisabled());
    QTest::mouseClick(push, Qt::LeftButton);
    EXPECT_EQ(seen.changed, 1);
    button->SetDisabled(false);
    QTest::mouseClick(push, Qt::LeftButton);
    EXPECT_EQ(seen.changed, 2);
}

TEST_F(ControlsTest, StaticTextAndTooltipsAreLocalised) {
    boost::intrusive_ptr<UI_StaticText> label(
        new UI_StaticText(u"$$$/Corvala/Test/Stream=Caption Stream:"));
    label->SetAlignment(kControlAlignment_Right);
    label->SetToolTip(u"$$$/Corvala/Test/Tip=Select caption stream", 400);
    Place(*label, {171, 3, 226, 22});
    auto* qlabel = qobject_cast<QLabel*>(platform::ui::WidgetOf(*label));
    ASSERT_NE(qlabel, nullptr);
    EXPECT_EQ(qlabel->text(), QStringLiteral("Caption Stream:"));
    EXPECT_TRUE(qlabel->alignment() & Qt::AlignRight);
    EXPECT_EQ(label->GetToolTip(), u"Select caption stream");
}

TEST_F(ControlsTest, SwatchClickIsAChange) {
    boost::intrusive_ptr<UI_Swatch> swatch(new UI_Swatch());
    swatch->SetValue({1.0f, 0.5f, 0.0f, 1.0f});
    swatch->SetShowBorder(true);
    Place(*swatch, {300, 33, 320, 53});
    Notifications seen;
    seen.Watch(*swatch);
    QWidget* widget = platform::ui::WidgetOf(*swatch);

    const QImage drawn = widget->grab().toImage();
    EXPECT_EQ(drawn.pixelColor(10, 10), QColor(255, 128, 0));

    QTest::mouseClick(widget, Qt::RightButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(seen.changed, 0);
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(seen.changed, 1);
}

// A control drawn and handled by its owner, as the panel's own controls are.
class ClickGrid : public UI_InteractiveControlView {
public:
    std::vector<std::pair<float, float>> presses;
    zelui::ui::UI_CursorID cursor = zelui::ui::kCursor_PointingHand;

    bool UI_DoMouseEvent(const zelui::ui::UI_MouseEvent& event) override {
        if (event.GetType() != zelui::ui::kMouseEventType_Down ||
            event.GetButton() != zelui::ui::kMouseButton_First) {
            return false;
        }
        presses.emplace_back(event.GetX(), event.GetY());
        NotifyChanged();
        return true;
    }
    bool UI_DoCursor(const zelui::ui::UI_CursorRequest& request) override {
        if (cursor == zelui::ui::kCursor_Default || request.GetTarget() != this) {
            return false;
        }
        zelui::ui::UI_ResourceManager::SetCursor(cursor);
        return true;
    }
    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override {
        const UI_Rect bounds = GetBounds();
        drawbot.FillRect({bounds.left, bounds.top, bounds.left + 7, bounds.top + 7},
                         zelui::ui::GetColor(zelui::ui::kUIColor_GridCell));
    }
};

TEST_F(ControlsTest, OwnerDrawnControlSeesPositionsInItsViewsCoordinates) {
    boost::intrusive_ptr<ClickGrid> grid(new ClickGrid());
    Place(*grid, {400, 33, 421, 54});
    Notifications seen;
    seen.Watch(*grid);
    QWidget* widget = platform::ui::WidgetOf(*grid);

    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(8, 15));
    ASSERT_EQ(grid->presses.size(), 1u);
    EXPECT_EQ(grid->presses[0], std::make_pair(408.0f, 48.0f));
    EXPECT_EQ(seen.changed, 1);

    QTest::mouseClick(widget, Qt::RightButton, Qt::NoModifier, QPoint(8, 15));
    EXPECT_EQ(grid->presses.size(), 1u);

    const QImage drawn = widget->grab().toImage();
    EXPECT_EQ(zelui::ui::UI_Color(drawn.pixelColor(3, 3).red(), drawn.pixelColor(3, 3).green(),
                                  drawn.pixelColor(3, 3).blue(), 255),
              zelui::ui::GetColor(zelui::ui::kUIColor_GridCell));
}

TEST_F(ControlsTest, CursorComesFromTheControlOrItsDefault) {
    boost::intrusive_ptr<ClickGrid> grid(new ClickGrid());
    Place(*grid, {400, 33, 421, 54});
    QWidget* widget = platform::ui::WidgetOf(*grid);

    QTest::mouseMove(widget, QPoint(3, 3));
    SendMouse(*widget, QEvent::MouseMove, QPoint(4, 4), Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(widget->cursor().shape(), Qt::PointingHandCursor);

    grid->cursor = zelui::ui::kCursor_Default;
    SendMouse(*widget, QEvent::MouseMove, QPoint(5, 5), Qt::NoButton, Qt::NoButton);
    EXPECT_EQ(widget->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(ControlsTest, PopupMenuReturnsTheChosenItemOrMinusOne) {
    boost::intrusive_ptr<UI_Swatch> anchor(new UI_Swatch());
    Place(*anchor, {300, 33, 320, 53});
    const std::vector<UI_MenuItem> items{
        {u"White", kMenuItem_Checked, zelui::ui::UI_Color{255, 255, 255, 255}},
        {u"", kMenuItem_Separator, std::nullopt},
        {u"Grey", kMenuItem_Disabled, std::nullopt},
        {u"$$$/Corvala/Test/Black=Black", kMenuItem_Plain, zelui::ui::UI_Color{0, 0, 0, 255}},
    };
    bool menuWasModal = false;
    WhenModalLoopRuns([&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        menuWasModal = zelui::ui::UI_NodeManager::Get()->HasModalWindow();
        EXPECT_EQ(menu->actions().at(3)->text(), QStringLiteral("Black"));
        // Down from the checked first item skips the separator and the disabled item.
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    EXPECT_EQ(UI_DoPopupMenu(items, *anchor), 3);
    EXPECT_TRUE(menuWasModal);

    WhenModalLoopRuns([] { QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape); });
    EXPECT_EQ(UI_DoPopupMenu(items, *anchor), -1);
}

} // namespace
} // namespace platform_ui_test
