#include "PlatformHost/HostAccess.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "zelui/controls/UI_TextEdit.h"
#include "zelui/ui/UI_Events.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QApplication>
#include <QClipboard>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QtTest/QTest>
#include <boost/intrusive_ptr.hpp>
#include <gtest/gtest.h>

#include <vector>

namespace platform_ui_test {
namespace {

using namespace zelui::controls;
using zelui::ui::UI_KeyboardEvent;

// A caption-row-like edit: the field-advance key (with or without Shift) and
// the cancel key, seen as a filter node while focused, are its own.
class RowEdit : public UI_TextEdit {
public:
    RowEdit()
        : UI_TextEdit(kTextEdit_MultiLine, kControlAlignment_Left) {
        zelui::ui::UI_NodeManager::Get()->AddKeyboardEventFilterNode(this);
    }

    bool UI_DoKeyboardEvent(const UI_KeyboardEvent& event) override {
        const std::uint32_t modifiers = event.GetModifiers() & ~zelui::ui::kKeyModifier_Meta;
        if (event.GetKeyboardCode() == zelui::ui::kKeyboardCode_FieldAdvance &&
            (modifiers == 0 || modifiers == zelui::ui::kKeyModifier_Shift)) {
            if (event.GetType() == zelui::ui::kKeyEventType_Press) {
                rowMoves.push_back(modifiers == 0 ? 1 : -1);
            }
            return true;
        }
        return UI_TextEdit::UI_DoKeyboardEvent(event);
    }
    bool UI_DoPreKeyboardEvent(const UI_KeyboardEvent& event) override {
        if (!event.IsShortcut(zelui::ui::kKeyboardCode_Cancel, 0) || !HasFocus()) {
            return false;
        }
        if (event.GetType() == zelui::ui::kKeyEventType_Press) {
            ++leaves;
        }
        return true;
    }

    bool UI_DoMouseEvent(const zelui::ui::UI_MouseEvent& event) override {
        clicks.emplace_back(event.GetX(), event.GetY());
        return UI_TextEdit::UI_DoMouseEvent(event);
    }

    std::vector<int> rowMoves;
    int leaves = 0;
    std::vector<std::pair<float, float>> clicks;
};

class TextEditTest : public testing::Test {
protected:
    TextEditTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"edits", {});
        ShowWorkspace();
        edit->SetBounds({150, 10, 400, 70});
        creator.view->AddControl(*edit);
        widget = qobject_cast<QPlainTextEdit*>(platform::ui::WidgetOf(*edit));
        edit->NotifyWhenChanged([this](const UI_ControlChangedMessage&) { ++changed; });
        edit->NotifyWhenChangedInteractively(
            [this](const UI_InteractiveControlChangedMessage& message) {
                interactive.push_back(message.GetChangeMessage());
            });
    }

    RecordingCreator creator{u"edits"};
    boost::intrusive_ptr<RowEdit> edit{new RowEdit()};
    QPlainTextEdit* widget = nullptr;
    int changed = 0;
    std::vector<UI_InteractiveChange> interactive;
};

TEST_F(TextEditTest, ValueAndSelectionCountLineBreaksAsCRLF) {
    edit->SetValue(u"ab\ncd\r\nef");
    EXPECT_EQ(edit->GetValue(), u"ab\r\ncd\r\nef");
    EXPECT_EQ(changed, 0) << "setting the value is not a user change";

    edit->SetSelection(4, 6); // "cd"
    EXPECT_EQ(widget->textCursor().selectedText(), QStringLiteral("cd"));
    std::int64_t start = -1;
    std::int64_t end = -1;
    edit->GetSelection(start, end);
    EXPECT_EQ(start, 4);
    EXPECT_EQ(end, 6);

    edit->SetSelection(0, -1);
    edit->GetSelection(start, end);
    EXPECT_EQ(start, 0);
    EXPECT_EQ(end, 10);
}

TEST_F(TextEditTest, AClickIntoTheTextTakesTheFocusAndIsSeenInViewCoordinates) {
    const QPoint inside(5, 7);
    QTest::mouseClick(widget->viewport(), Qt::LeftButton, {}, inside);
    EXPECT_TRUE(edit->HasFocus());
    ASSERT_FALSE(edit->clicks.empty());
    const QPoint expected = widget->viewport()->mapTo(widget, inside) + widget->pos();
    EXPECT_EQ(edit->clicks.front(), std::make_pair(float(expected.x()), float(expected.y())));
}

TEST_F(TextEditTest, TypingNotifiesEachEditAndFinalWhenTheFocusLeaves) {
    edit->SetFocus();
    QTest::keyClicks(widget, "hi");
    EXPECT_EQ(changed, 2);
    EXPECT_EQ(interactive, (std::vector<UI_InteractiveChange>{kInteractiveChange_Intermediate,
                                                              kInteractiveChange_Intermediate}));
    creator.view->SetFocus();
    EXPECT_EQ(interactive.back(), kInteractiveChange_Final);

    // Leaving again without edits sends nothing more.
    edit->SetFocus();
    creator.view->SetFocus();
    EXPECT_EQ(interactive.size(), 3u);
}

TEST_F(TextEditTest, EditCommandsFollowTheirAvailability) {
    edit->SetValue(u"one two");
    EXPECT_FALSE(edit->CanCopy());
    EXPECT_FALSE(edit->CanUndo());
    edit->SetSelection(4, 7);
    EXPECT_TRUE(edit->CanCopy());
    EXPECT_TRUE(edit->CanCut());
    EXPECT_TRUE(edit->CanDelete());

    edit->Cut();
    EXPECT_EQ(edit->GetValue(), u"one ");
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("two"));
    EXPECT_EQ(changed, 1);
    EXPECT_TRUE(edit->CanUndo());
    EXPECT_TRUE(edit->CanPaste());

    edit->SetSelection(0, 3);
    edit->Paste();
    EXPECT_EQ(edit->GetValue(), u"two ");
    edit->Undo();
    EXPECT_EQ(edit->GetValue(), u"one ");
    EXPECT_TRUE(edit->CanRedo());
    edit->Redo();
    EXPECT_EQ(edit->GetValue(), u"two ");

    edit->SetSelection(0, 3);
    edit->Delete();
    EXPECT_EQ(edit->GetValue(), u" ");
    edit->SetSelection(0, 0);
    EXPECT_FALSE(edit->CanDelete());
}

TEST_F(TextEditTest, KeyboardHookTakesFieldAdvanceBeforeFocusNavigation) {
    edit->SetValue(u"text");
    edit->SetFocus();
    QTest::keyClick(widget, Qt::Key_Tab);
    QTest::keyClick(widget, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(widget, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(edit->rowMoves, (std::vector<int>{1, -1}));
    EXPECT_TRUE(edit->HasFocus());
    EXPECT_EQ(edit->GetValue(), u"text");
}

TEST_F(TextEditTest, CancelIsTakenByTheFilterOnlyWhileFocused) {
    edit->SetFocus();
    QTest::keyClick(widget, Qt::Key_Escape);
    EXPECT_EQ(edit->leaves, 1);

    creator.view->SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(edit->leaves, 1);
}

TEST_F(TextEditTest, FontAndScrollingBackToTheStart) {
    edit->SetFont({u"DejaVu Sans", u"Bold", 14.0f});
    const UI_TextFont font = edit->GetFont();
    EXPECT_EQ(font.family, u"DejaVu Sans");
    EXPECT_EQ(font.styleName, u"Bold");
    EXPECT_FLOAT_EQ(font.sizePoints, 14.0f);

    zelcore::UTF16String lines;
    for (int line = 0; line < 40; ++line) {
        lines += u"line\r\n";
    }
    edit->SetValue(lines);
    widget->verticalScrollBar()->setValue(widget->verticalScrollBar()->maximum());
    ASSERT_GT(widget->verticalScrollBar()->value(), 0);
    edit->ScrollToBegin();
    EXPECT_EQ(widget->verticalScrollBar()->value(), 0);
}

} // namespace
} // namespace platform_ui_test
