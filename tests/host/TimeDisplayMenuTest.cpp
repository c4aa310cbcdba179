// View > Time Display: each target's menu groups its items under "Video" and
// "Audio", with one checked item per group.
#include "TimeDisplayMenu.h"
#include "SequenceSettingsDialog.h"

#include "HostTestSupport.h"
#include <QApplication>
#include <QComboBox>

#include <gtest/gtest.h>

namespace {

using host_test::HostWindowTest;

class TimeDisplayMenuTest : public HostWindowTest {
protected:
    QMenu& TargetMenu(const QString& title) {
        for (QMenu* menu : Window().GetTimeDisplayMenu().findChildren<QMenu*>()) {
            if (menu->title() == title) {
                return *menu;
            }
        }
        ADD_FAILURE() << "no menu " << title.toStdString();
        return Window().GetTimeDisplayMenu();
    }

    void Choose(QMenu& menu, const QString& text) {
        for (QAction* action : menu.actions()) {
            if (action->text() == text) {
                action->trigger();
                return;
            }
        }
        ADD_FAILURE() << "no item " << text.toStdString();
    }

    // The menu's items as "heading: checked items", one entry per heading.
    QStringList CheckedByHeading(QMenu& menu) {
        QStringList groups;
        for (QAction* action : menu.actions()) {
            if (action->isSeparator()) {
                groups << action->text() + ":";
            } else if (action->isChecked() && !groups.isEmpty()) {
                groups.back() += " " + action->text();
            }
        }
        return groups;
    }
};

TEST_F(TimeDisplayMenuTest, EachTargetShowsOneCheckedItemUnderVideoAndUnderAudio) {
    for (const QString& title : {QStringLiteral("Source"), QStringLiteral("Sequence")}) {
        QMenu& menu = TargetMenu(title);
        EXPECT_EQ(CheckedByHeading(menu), (QStringList{"Video: 29.97 fps Drop-Frame Timecode",
                                                       "Audio: Audio Samples (48 kHz)"}))
            << title.toStdString();

        // Choosing in one group keeps the other's choice.
        for (QAction* action : menu.actions()) {
            if (action->text() == "25 fps Timecode" || action->text() == "Milliseconds") {
                action->trigger();
            }
        }
        EXPECT_EQ(CheckedByHeading(menu),
                  (QStringList{"Video: 25 fps Timecode", "Audio: Milliseconds"}))
            << title.toStdString();
    }
}

TEST_F(TimeDisplayMenuTest, TheSequenceMenuAndTheSettingsDialogChangeOneSetting) {
    OpenDemo();
    const auto sequence = Sequence(host_test::kDemoSequence);
    QMenu& menu = TargetMenu("Sequence");
    Window().GetTimeDisplayMenu().Refresh();
    EXPECT_EQ(CheckedByHeading(menu), (QStringList{"Video: 29.97 fps Drop-Frame Timecode",
                                                   "Audio: Audio Samples (48 kHz)"}));

    Choose(menu, "25 fps Timecode");
    EXPECT_EQ(sequence->GetSettings().videoTimeDisplay, zelmediatypes::kTimeDisplay_25Timecode);
    EXPECT_EQ(MenuText(Window().GetEditMenu(), UIF::kCommand_Undo),
              "Undo Change Sequence Settings");

    // The dialog shows the menu's choice, and its own choice is the menu's.
    QString shownInDialog;
    host_test::WhenModalLoopRuns([&shownInDialog] {
        auto* dialog =
            dynamic_cast<host::SequenceSettingsDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        QComboBox& video = dialog->GetVideoTimeDisplayField();
        shownInDialog = video.currentText();
        video.setCurrentIndex(video.findText("23.976 fps Timecode"));
        dialog->accept();
    });
    DoubleClickItem(sequence.Get());
    EXPECT_EQ(shownInDialog, "25 fps Timecode");
    EXPECT_EQ(sequence->GetSettings().videoTimeDisplay, zelmediatypes::kTimeDisplay_23976Timecode);
    Window().GetTimeDisplayMenu().Refresh();
    EXPECT_EQ(CheckedByHeading(menu),
              (QStringList{"Video: 23.976 fps Timecode", "Audio: Audio Samples (48 kHz)"}));

    // Undone, the menu shows the setting as it was.
    Window().GetDocument().Undo();
    Window().GetTimeDisplayMenu().Refresh();
    EXPECT_EQ(CheckedByHeading(menu).front(), "Video: 25 fps Timecode");
}

} // namespace
