#include "PlatformHost/HostAccess.h"
#include "UIF/SubView.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "zelui/controls/UI_TextEdit.h"
#include "zelui/ui/UI_Events.h"
#include "zelui/ui/UI_Node.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QApplication>
#include <QtTest/QTest>
#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform_ui_test {
namespace {

using zelui::ui::UI_KeyboardEvent;

struct SeenKey {
    std::string node;
    zelui::ui::UI_KeyEventType type;
    zelui::ui::KeyboardCode code;
    char32_t character;
    std::uint32_t modifiers;
};

class RecordingNode : public zelui::ui::UI_Node {
public:
    RecordingNode(std::string nodeName, std::vector<SeenKey>& sharedLog)
        : name(std::move(nodeName))
        , log(sharedLog) {}
    bool UI_DoPreKeyboardEvent(const UI_KeyboardEvent& event) override {
        log.push_back({name, event.GetType(), event.GetKeyboardCode(), event.GetCharacter(),
                       event.GetModifiers()});
        return event.GetKeyboardCode() == consumes;
    }
    std::string name;
    std::vector<SeenKey>& log;
    zelui::ui::KeyboardCode consumes = zelui::ui::kKeyboardCode_None;
};

class KeyRecordingPane : public UIF::SubView {
public:
    using UIF::SubView::SubView;
    std::vector<std::pair<std::int32_t, std::uint32_t>> keys;
    int focusChanges = 0;

protected:
    bool KeyDown(std::int32_t keyCode, std::uint32_t modifiers) override {
        keys.emplace_back(keyCode, modifiers);
        return true;
    }
    void FocusChanged() override { ++focusChanges; }
};

class KeyboardTest : public testing::Test {
protected:
    KeyboardTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"keys", {});
        pane = std::make_unique<KeyRecordingPane>(creator.view.get());
        creator.view->AddSubView(*pane);
        pane->SetBounds(UIF::Rect::FromSize(0, 0, 300, 200));
        ShowWorkspace();
        pane->SetFocus();
    }

    RecordingCreator creator{u"keys"};
    std::unique_ptr<KeyRecordingPane> pane;
    std::vector<SeenKey> seen;
};

TEST_F(KeyboardTest, FiltersSeeKeysBeforeTheFocusedViewMostRecentFirst) {
    RecordingNode first("first", seen);
    RecordingNode second("second", seen);
    zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(&first);
    zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(&second);
    zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(&first);

    QTest::keyPress(platform::ui::WidgetOf(*pane), Qt::Key_A);
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[0].node, "second");
    EXPECT_EQ(seen[1].node, "first");
    EXPECT_EQ(seen[0].type, zelui::ui::kKeyEventType_Press);
    EXPECT_EQ(seen[0].code, zelui::ui::kKeyboardCode_Character);
    EXPECT_EQ(seen[0].character, U'a');
    EXPECT_EQ(pane->keys.size(), 1u);

    seen.clear();
    second.consumes = zelui::ui::kKeyboardCode_Character;
    QTest::keyPress(platform::ui::WidgetOf(*pane), Qt::Key_B);
    ASSERT_EQ(seen.size(), 1u);
    EXPECT_EQ(pane->keys.size(), 1u);
}

TEST_F(KeyboardTest, DestroyedNodeLeavesTheFilterList) {
    {
        RecordingNode transient("transient", seen);
        zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(&transient);
    }
    QTest::keyPress(platform::ui::WidgetOf(*pane), Qt::Key_A);
    EXPECT_TRUE(seen.empty());
    EXPECT_EQ(pane->keys.size(), 1u);
}

TEST_F(KeyboardTest, FieldAdvanceCancelAndModifiersAreTranslated) {
    RecordingNode node("node", seen);
    zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(&node);
    // Tab moves the focus on; each key goes to whichever widget has it then.
    auto focused = [] {
        return QApplication::focusWidget();
    };

    QTest::keyPress(focused(), Qt::Key_Tab);
    QTest::keyPress(focused(), Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(focused(), Qt::Key_Escape);
    QTest::keyPress(focused(), Qt::Key_Return, Qt::ControlModifier | Qt::AltModifier);
    // The modifier keys themselves are keys too; only the others matter here.
    std::erase_if(seen,
                  [](const SeenKey& key) { return key.code == zelui::ui::kKeyboardCode_Other; });

    ASSERT_EQ(seen.size(), 5u);
    EXPECT_EQ(seen[0].code, zelui::ui::kKeyboardCode_FieldAdvance);
    EXPECT_EQ(seen[0].modifiers, 0u);
    EXPECT_EQ(seen[1].code, zelui::ui::kKeyboardCode_FieldAdvance);
    EXPECT_EQ(seen[1].modifiers, std::uint32_t{zelui::ui::kKeyModifier_Shift});
    EXPECT_EQ(seen[2].code, zelui::ui::kKeyboardCode_Cancel);
    EXPECT_EQ(seen[2].type, zelui::ui::kKeyEventType_Press);
    EXPECT_EQ(seen[3].type, zelui::ui::kKeyEventType_Release);
    EXPECT_EQ(seen[4].code, zelui::ui::kKeyboardCode_Return);
    EXPECT_EQ(seen[4].modifiers,
              std::uint32_t{zelui::ui::kKeyModifier_Control | zelui::ui::kKeyModifier_Alt});
}

TEST_F(KeyboardTest, ViewKeyDownGetsNegatedVirtualKeysForNavigationKeys) {
    QWidget* widget = platform::ui::WidgetOf(*pane);
    for (Qt::Key key :
         {Qt::Key_Up, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_PageUp, Qt::Key_PageDown}) {
        QTest::keyClick(widget, key);
    }
    QTest::keyClick(widget, 'Q', Qt::ShiftModifier);
    const std::vector<std::pair<std::int32_t, std::uint32_t>> expected{
        {-38, 0}, {-40, 0}, {-36, 0}, {-35, 0}, {-33, 0}, {-34, 0}, {'Q', 2}};
    EXPECT_EQ(pane->keys, expected);
}

TEST_F(KeyboardTest, KeyStateFollowsTheModifiersOfTheLastInput) {
    QWidget* widget = platform::ui::WidgetOf(*pane);
    QTest::keyPress(widget, Qt::Key_Shift, Qt::ShiftModifier);
    EXPECT_TRUE(zelui::ui::GetKeyState(16));
    EXPECT_FALSE(zelui::ui::GetKeyState(17));
    QTest::keyRelease(widget, Qt::Key_Shift, Qt::NoModifier);
    EXPECT_FALSE(zelui::ui::GetKeyState(16));
}

TEST_F(KeyboardTest, FocusMovesBetweenViewAndControlWithHooksOnBothSides) {
    class FocusEdit : public zelui::controls::UI_TextEdit {
    public:
        FocusEdit()
            : UI_TextEdit(zelui::controls::kTextEdit_MultiLine,
                          zelui::controls::kControlAlignment_Left) {}
        void UI_FocusChanged(zelui::controls::UI_FocusChange change) override {
            changes.push_back(change);
            UI_TextEdit::UI_FocusChanged(change);
        }
        std::vector<zelui::controls::UI_FocusChange> changes;
    };
    boost::intrusive_ptr<FocusEdit> edit(new FocusEdit());
    edit->SetBounds({10, 10, 200, 60});
    pane->AddControl(*edit);
    const int paneChangesBefore = pane->focusChanges;

    edit->SetFocus();
    EXPECT_TRUE(edit->HasFocus());
    EXPECT_TRUE(pane->HasFocus()) << "a control's focus counts for its view";
    pane->SetFocus();
    EXPECT_FALSE(edit->HasFocus());

    EXPECT_EQ(edit->changes,
              (std::vector<zelui::controls::UI_FocusChange>{zelui::controls::kFocusChange_Gained,
                                                            zelui::controls::kFocusChange_Lost}));
    EXPECT_EQ(pane->focusChanges, paneChangesBefore + 2);
}

} // namespace
} // namespace platform_ui_test
