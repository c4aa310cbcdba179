// View > Time Display: each target's menu groups its items under "Video" and
// "Audio", with one checked item per group.
#include "TimeDisplayMenu.h"
#include "HostTestSupport.h"

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

} // namespace
