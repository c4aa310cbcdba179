// The keyboard-shortcuts dialog: keys recorded by pressing them, clashes in
// one panel shown and blocking OK, search, Cancel, Reset to Defaults, and the
// changes kept for the next run.
#include "ShortcutsDialog.h"
#include "HostCommands.h"
#include "HostTestSupport.h"
#include "UIF/ShortcutManager.h"

#include <QApplication>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

namespace {

using host_test::HostWindowTest;

std::string BoundKey(const std::string& context, const std::string& command) {
    return UIF::ShortcutManager::Instance()->GetBoundKey(context, command);
}

class ShortcutsDialogTest : public HostWindowTest {
protected:
    // The dialog as Edit > Keyboard Shortcuts shows it: modal, so that keys
    // pressed in it reach no command of the window behind it.
    host::ShortcutsDialog& Dialog() {
        if (!dialog_) {
            dialog_ = std::make_unique<host::ShortcutsDialog>(&Window().GetMainWindow());
            dialog_->setWindowModality(Qt::ApplicationModal);
            dialog_->show();
            QCoreApplication::processEvents();
        }
        return *dialog_;
    }

    void Record(const std::string& context, const std::string& command, int key,
                Qt::KeyboardModifiers modifiers) {
        ASSERT_TRUE(Dialog().SelectCommand(context, command)) << command;
        host::KeyRecorder& recorder = Dialog().GetKeyRecorder();
        recorder.setFocus();
        QTest::keyClick(&recorder, static_cast<Qt::Key>(key), modifiers);
    }

    // The key column of the command's row as shown.
    QString ShownKey(const std::string& context, const std::string& command) {
        EXPECT_TRUE(Dialog().SelectCommand(context, command));
        const QModelIndex current = Dialog().GetTable().selectionModel()->currentIndex();
        return current.siblingAtColumn(host::ShortcutsDialog::kKeyColumn).data().toString();
    }

    void TearDown() override {
        dialog_.reset();
        HostWindowTest::TearDown();
    }

private:
    std::unique_ptr<host::ShortcutsDialog> dialog_;
};

TEST_F(ShortcutsDialogTest, APressedKeyIsRecordedAndBoundOnOkThenKeptForTheNextRun) {
    Record("global", "cmd.file.import", Qt::Key_F7, Qt::ControlModifier);
    EXPECT_EQ(ShownKey("global", "cmd.file.import"), "Ctrl+F7");
    EXPECT_EQ(BoundKey("global", "cmd.file.import"), "Ctrl+I") << "nothing bound before OK";
    // A second key replaces the first instead of starting a sequence.
    Record("global", "cmd.file.import", Qt::Key_F8, Qt::ShiftModifier);
    EXPECT_EQ(ShownKey("global", "cmd.file.import"), "Shift+F8");
    Dialog().GetOkButton().click();
    EXPECT_EQ(BoundKey("global", "cmd.file.import"), "Shift+F8");
}

TEST_F(ShortcutsDialogTest, ChangesMadeThroughTheEditMenuAreKeptForTheNextRun) {
    host_test::WhenModalLoopRuns([] {
        auto* dialog = dynamic_cast<host::ShortcutsDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        ASSERT_TRUE(dialog->SelectCommand("global", "cmd.file.saveas"));
        QTest::keyClick(&dialog->GetKeyRecorder(), Qt::Key_F12);
        dialog->GetOkButton().click();
    });
    ASSERT_TRUE(ChooseMenuCommand(Window().GetEditMenu(), host::kHostCommand_KeyboardShortcuts));
    EXPECT_EQ(BoundKey("global", "cmd.file.saveas"), "F12");

    StartNextHost();
    EXPECT_EQ(BoundKey("global", "cmd.file.saveas"), "F12");
    EXPECT_EQ(BoundKey("global", "cmd.file.save"), "Ctrl+S");
}

TEST_F(ShortcutsDialogTest, AKeyOfAnotherCommandOfThePanelIsAClashThatMustBeResolved) {
    Record("global", "cmd.file.import", Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(Dialog().GetClashText().isVisible());
    EXPECT_TRUE(Dialog().GetClashText().text().contains("Save the project"))
        << Dialog().GetClashText().text().toStdString();
    EXPECT_FALSE(Dialog().GetOkButton().isEnabled());
    Dialog().accept();
    EXPECT_TRUE(Dialog().isVisible()) << "OK waits while a clash stands";

    // The same key in another panel is no clash.
    Record("captions", "cmd.captions.bold", Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(ShownKey("captions", "cmd.captions.bold") == "Ctrl+O");

    // Taking the key from the other command resolves it.
    ASSERT_TRUE(Dialog().SelectCommand("global", "cmd.file.save"));
    Dialog().GetClearButton().click();
    EXPECT_FALSE(Dialog().GetClashText().isVisible());
    EXPECT_TRUE(Dialog().GetOkButton().isEnabled());
    Dialog().GetOkButton().click();
    EXPECT_EQ(BoundKey("global", "cmd.file.import"), "Ctrl+S");
    EXPECT_EQ(BoundKey("global", "cmd.file.save"), "");
    EXPECT_EQ(BoundKey("global", "cmd.file.open"), "Ctrl+O");
    EXPECT_EQ(BoundKey("captions", "cmd.captions.bold"), "Ctrl+O");
}

TEST_F(ShortcutsDialogTest, CancelForgetsAndResetToDefaultsPutsEveryDefaultBack) {
    ASSERT_EQ(UIF::ShortcutManager::Instance()->BindKey("global", "cmd.file.save", "F2"),
              UIF::kBind_Done);
    Record("global", "cmd.file.open", Qt::Key_F3, Qt::NoModifier);
    Dialog().reject();
    EXPECT_EQ(BoundKey("global", "cmd.file.open"), "Ctrl+O");

    host::ShortcutsDialog again(&Window().GetMainWindow());
    EXPECT_TRUE(again.SelectCommand("global", "cmd.file.save"));
    again.GetResetButton().click();
    again.GetOkButton().click();
    EXPECT_EQ(BoundKey("global", "cmd.file.save"), "Ctrl+S");
}

TEST_F(ShortcutsDialogTest, TheSearchFieldNarrowsTheListByNamePanelOrKey) {
    const int all = Dialog().GetTable().model()->rowCount();
    QTest::keyClicks(&Dialog().GetSearchField(), "undo");
    ASSERT_EQ(Dialog().GetTable().model()->rowCount(), 1);
    EXPECT_EQ(Dialog().GetTable().model()->index(0, 0).data().toString(), "Undo");
    EXPECT_FALSE(Dialog().SelectCommand("global", "cmd.file.save")) << "hidden by the search";

    Dialog().GetSearchField().setText("captions panel");
    EXPECT_EQ(Dialog().GetTable().model()->rowCount(), 10);
    Dialog().GetSearchField().clear();
    EXPECT_EQ(Dialog().GetTable().model()->rowCount(), all);
}

} // namespace
