#include "UIF/CommandRouting.h"
#include "PlatformHost/HostAccess.h"
#include "UIF/PictureButton.h"
#include "UIF/SubView.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QToolButton>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace platform_ui_test {
namespace {

// Answers and obeys the commands it is told to, recording what it is asked.
class ScriptedHandler : public UIF::CommandHandler {
public:
    ScriptedHandler(std::string handlerName, std::vector<std::string>& sharedLog)
        : name(std::move(handlerName))
        , log(sharedLog) {}

    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool&, bool&,
                           zelcore::UTF16String&) override {
        log.push_back(name + ":status:" + std::to_string(id));
        if (auto found = enabledByCommand.find(id); found != enabledByCommand.end()) {
            enabled = found->second;
            return true;
        }
        return false;
    }
    bool UpdateCommandForDisableMenuAppStatus(UIF::CommandID id, bool& enabled) override {
        log.push_back(name + ":modalStatus:" + std::to_string(id));
        if (availableUnderModal.contains(id)) {
            enabled = true;
            return true;
        }
        return false;
    }
    bool ObeyCommand(const UIF::Command& command) override {
        log.push_back(name + ":obey:" + std::to_string(command.GetID()));
        return enabledByCommand.contains(command.GetID());
    }

    std::string name;
    std::vector<std::string>& log;
    std::map<UIF::CommandID, bool> enabledByCommand;
    std::set<UIF::CommandID> availableUnderModal;
};

class ScriptedSubView : public UIF::SubView {
public:
    ScriptedSubView(UIF::Commander* commander, std::vector<std::string>& sharedLog)
        : UIF::SubView(commander)
        , handler("pane", sharedLog) {}

    bool FindCommandStatus(UIF::CommandID id, bool& enabled, bool& checked, bool& mark,
                           zelcore::UTF16String& text) override {
        return handler.FindCommandStatus(id, enabled, checked, mark, text);
    }
    bool ObeyCommand(const UIF::Command& command) override { return handler.ObeyCommand(command); }

    ScriptedHandler handler;
};

class CommandRoutingTest : public testing::Test {
protected:
    CommandRoutingTest()
        : creator(u"routing")
        , application("application", log) {
        UIF::ApplicationCommander()->AttachCommandHandler(&application);
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"routing", {});
        pane = std::make_unique<ScriptedSubView>(creator.view.get(), log);
        creator.view->AddSubView(*pane);
        pane->SetBounds(UIF::Rect::FromSize(0, 0, 200, 100));
        ShowWorkspace();
    }

    std::vector<std::string> log;
    RecordingCreator creator;
    ScriptedHandler application;
    std::unique_ptr<ScriptedSubView> pane;
};

TEST_F(CommandRoutingTest, CommandTravelsFromFocusedViewToItsTabViewThenTheApplication) {
    pane->SetFocus();
    ASSERT_EQ(UIF::FocusedCommander(), pane.get());
    application.enabledByCommand[UIF::kCommand_Copy] = true;

    EXPECT_TRUE(UIF::SendCommand(UIF::kCommand_Copy));

    EXPECT_EQ(log, (std::vector<std::string>{"pane:status:57634", "application:status:57634",
                                             "pane:obey:57634", "application:obey:57634"}));
}

TEST_F(CommandRoutingTest, NearestHandlerAnswersAndObeys) {
    pane->SetFocus();
    pane->handler.enabledByCommand[UIF::kCommand_Paste] = true;
    application.enabledByCommand[UIF::kCommand_Paste] = false;

    const UIF::CommandStatus status = UIF::FindCommandStatus(UIF::kCommand_Paste);
    EXPECT_TRUE(status.handled);
    EXPECT_TRUE(status.enabled);
    EXPECT_TRUE(UIF::SendCommand(UIF::kCommand_Paste));
    EXPECT_EQ(std::count(log.begin(), log.end(), "application:obey:57637"), 0);
}

TEST_F(CommandRoutingTest, DisabledCommandIsNotObeyed) {
    pane->SetFocus();
    pane->handler.enabledByCommand[UIF::kCommand_Undo] = false;

    EXPECT_FALSE(UIF::SendCommand(UIF::kCommand_Undo));
    EXPECT_EQ(log, (std::vector<std::string>{"pane:status:57643"}));
}

TEST_F(CommandRoutingTest, UnansweredCommandStillReachesTheChainAndReportsUnhandled) {
    pane->SetFocus();
    const UIF::CommandStatus status = UIF::FindCommandStatus(UIF::kCommand_SelectAll);
    EXPECT_FALSE(status.handled);
    EXPECT_FALSE(UIF::SendCommand(UIF::kCommand_SelectAll));
    EXPECT_NE(std::find(log.begin(), log.end(), "application:obey:57642"), log.end());
}

TEST_F(CommandRoutingTest, CreatorOfTheTabViewIsInItsChain) {
    class CommandingCreator : public RecordingCreator, public ScriptedHandler {
    public:
        CommandingCreator(std::vector<std::string>& sharedLog)
            : RecordingCreator(u"commanding")
            , ScriptedHandler("handler", sharedLog) {}
    } handlerCreator(log);
    handlerCreator.handlerID = u"commanding.id";
    handlerCreator.enabledByCommand[UIF::kCommand_Find] = true;
    UIF::Workspace::Instance()->CreateOrReanimateTabView(u"commanding", {});
    handlerCreator.view->SetFocus();

    EXPECT_TRUE(UIF::SendCommand(UIF::kCommand_Find));
    EXPECT_NE(std::find(log.begin(), log.end(), "handler:obey:11311"), log.end());

    // Destroying the view takes the handler out of its chain.
    handlerCreator.view->Destroy(UIF::kTabViewDestroy_CloseFrame);
    log.clear();
    EXPECT_FALSE(UIF::SendCommand(UIF::kCommand_Find, handlerCreator.view.get()));
    EXPECT_EQ(std::find(log.begin(), log.end(), "handler:obey:11311"), log.end());
}

TEST_F(CommandRoutingTest, ModalWindowAsksTheDisabledMenuStatusInstead) {
    pane->SetFocus();
    application.enabledByCommand[UIF::kCommand_Copy] = true;
    application.enabledByCommand[UIF::kCommand_Find] = true;
    application.availableUnderModal.insert(UIF::kCommand_Find);
    bool copySent = true;
    bool findSent = false;
    QDialog dialog(platform::ui::WorkspaceMainWindow());
    WhenModalLoopRuns([&] {
        copySent = UIF::SendCommand(UIF::kCommand_Copy, pane.get());
        findSent = UIF::SendCommand(UIF::kCommand_Find, pane.get());
        dialog.accept();
    });
    dialog.exec();

    EXPECT_FALSE(copySent);
    EXPECT_TRUE(findSent);
    EXPECT_NE(std::find(log.begin(), log.end(), "application:modalStatus:11311"), log.end());
}

TEST_F(CommandRoutingTest, PictureButtonSendsItsCommandThroughItsViewAfterAskingStatus) {
    UIF::PictureButton button(*pane);
    button.SetDecal(UIF::kCaptionBoldDecal);
    button.SetCommandID(32015);
    button.SetBounds(UIF::Rect::FromSize(10, 10, 20, 20));
    pane->handler.enabledByCommand[32015] = true;
    auto* widget = qobject_cast<QToolButton*>(platform::ui::WidgetOf(button));
    ASSERT_NE(widget, nullptr);

    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(log, (std::vector<std::string>{"pane:status:32015", "pane:obey:32015"}));

    // The pressed look is the owner's: a click does not toggle it.
    EXPECT_FALSE(button.IsPressed());
    EXPECT_FALSE(widget->isChecked());
    button.SetPressed(true);
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_TRUE(widget->isChecked());

    log.clear();
    pane->handler.enabledByCommand[32015] = false;
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(log, (std::vector<std::string>{"pane:status:32015"}));

    log.clear();
    button.SetEnabled(false);
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_TRUE(log.empty());
}

} // namespace
} // namespace platform_ui_test
