#include "PlatformHost/HostAccess.h"
#include "UIF/CommandRouting.h"
#include "UIF/ShortcutManager.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"

#include <QApplication>
#include <QLineEdit>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <vector>

namespace platform_ui_test {
namespace {

void DeclarePanelCommands(UIF::ShortcutManager* manager) {
    manager->GetContext("global");
    UIF::CommandContext* context =
        manager->AddContext("panel", u"$$$/Corvala/Test/PanelContext=Test Panel");
    context->DeclareCommand("cmd.panel.bold", 32015, 0, u"", KSL::ImmutableString(), false);
    context->DeclareCommand("cmd.panel.italic", 32010, 0, u"", KSL::ImmutableString("Ctrl+I"),
                            false);
    context->DeclareCommand("cmd.panel.locked", 32011, 0, u"", KSL::ImmutableString("F7"), true);
}

// A panel whose tab view belongs to a handler naming the "panel" context and
// recording the commands it obeys.
class PanelHandler : public RecordingCreator, public UIF::CommandHandler {
public:
    PanelHandler(const zelcore::UTF16String& handlerName, const char* context)
        : RecordingCreator(handlerName)
        , contextName(context) {}

    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool&, bool&,
                           zelcore::UTF16String&) override {
        enabled = id != disabledCommand;
        return true;
    }
    bool ObeyCommand(const UIF::Command& command) override {
        obeyed.push_back(command.GetID());
        return true;
    }
    const char* GetCommandContextName() const override { return contextName; }

    const char* contextName;
    UIF::CommandID disabledCommand = 0;
    std::vector<UIF::CommandID> obeyed;
};

class ShortcutTest : public testing::Test {
protected:
    ShortcutTest() {
        UIF::ShortcutManager::Instance()->RegisterCommandContext(DeclarePanelCommands);
        ShowWorkspace();
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"panel", {});
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"other", {});
    }

    PanelHandler panel{u"panel", "panel"};
    PanelHandler other{u"other", ""};
};

TEST_F(ShortcutTest, DeclaredCommandsAreListedWithDefaultKeys) {
    UIF::ShortcutManager::Instance()->BuildShortcutTables();
    const std::vector<UIF::ShortcutEntry> list =
        UIF::ShortcutManager::Instance()->GetShortcutList();
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(list[0].contextName, "panel");
    EXPECT_EQ(list[0].contextDisplayName, u"Test Panel");
    EXPECT_EQ(list[0].commandName, "cmd.panel.bold");
    EXPECT_EQ(list[0].commandID, 32015u);
    EXPECT_EQ(list[0].boundKey, "");
    EXPECT_EQ(list[1].boundKey, "Ctrl+I");
    EXPECT_TRUE(list[2].bindingLocked);
}

TEST_F(ShortcutTest, BoundKeySendsTheCommandOnlyWhileThePanelHasFocus) {
    ASSERT_EQ(UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.bold", "Ctrl+B"),
              UIF::kBind_Done);

    panel.view->SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(panel.obeyed, std::vector<UIF::CommandID>{32015});

    other.view->SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(panel.obeyed.size(), 1u);
    EXPECT_TRUE(other.obeyed.empty());
}

TEST_F(ShortcutTest, DefaultKeyWorksUntilRebound) {
    panel.view->SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ(panel.obeyed, std::vector<UIF::CommandID>{32010});

    UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.italic", "Shift+F2");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_I, Qt::ControlModifier);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(panel.obeyed, (std::vector<UIF::CommandID>{32010, 32010}));
}

TEST_F(ShortcutTest, DisabledCommandLeavesTheKeyToTheFocusedControl) {
    QLineEdit field(platform::ui::WidgetOf(*panel.view));
    field.show();
    field.setFocus();
    UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.bold", "X");
    panel.disabledCommand = 32015;

    QTest::keyClick(&field, Qt::Key_X);
    EXPECT_TRUE(panel.obeyed.empty());
    EXPECT_EQ(field.text(), QStringLiteral("x"));

    panel.disabledCommand = 0;
    QTest::keyClick(&field, Qt::Key_X);
    EXPECT_EQ(panel.obeyed, std::vector<UIF::CommandID>{32015});
    EXPECT_EQ(field.text(), QStringLiteral("x"));
}

TEST_F(ShortcutTest, GlobalBindingsApplyInEveryPanel) {
    UIF::ShortcutManager::Instance()->GetContext("global")->DeclareCommand(
        "cmd.find", UIF::kCommand_Find, 0, u"", KSL::ImmutableString("Ctrl+F"), false);
    other.view->SetFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(other.obeyed, std::vector<UIF::CommandID>{UIF::kCommand_Find});
}

TEST_F(ShortcutTest, ListModelBindsTypedKeysAndRefusesLockedOnes) {
    auto model = platform::ui::CreateShortcutListModel();
    ASSERT_EQ(model->rowCount({}), 3);
    const QModelIndex boldKey = model->index(0, 3);
    EXPECT_TRUE(model->flags(boldKey) & Qt::ItemIsEditable);
    EXPECT_TRUE(model->setData(boldKey, QStringLiteral("Ctrl+Alt+B"), Qt::EditRole));
    EXPECT_EQ(model->data(boldKey, Qt::EditRole).toString(), QStringLiteral("Ctrl+Alt+B"));
    EXPECT_EQ(UIF::ShortcutManager::Instance()->GetBoundKey("panel", "cmd.panel.bold"),
              "Ctrl+Alt+B");

    const QModelIndex lockedKey = model->index(2, 3);
    EXPECT_FALSE(model->flags(lockedKey) & Qt::ItemIsEditable);
    EXPECT_FALSE(model->setData(lockedKey, QStringLiteral("F8"), Qt::EditRole));
    EXPECT_EQ(UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.locked", "F8"),
              UIF::kBind_Locked);
    EXPECT_EQ(UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.none", "F8"),
              UIF::kBind_UnknownCommand);
    EXPECT_EQ(UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.bold", "Ctrl+Nope"),
              UIF::kBind_InvalidKey);
}

TEST_F(ShortcutTest, RebuildingTablesKeepsUserBindings) {
    UIF::ShortcutManager::Instance()->BindKey("panel", "cmd.panel.bold", "Ctrl+B");
    UIF::ShortcutManager::Instance()->BuildShortcutTables();
    EXPECT_EQ(UIF::ShortcutManager::Instance()->GetShortcutList().size(), 3u);
    EXPECT_EQ(UIF::ShortcutManager::Instance()->FindBoundCommand("panel", "ctrl+b"), 32015u);
}

} // namespace
} // namespace platform_ui_test
