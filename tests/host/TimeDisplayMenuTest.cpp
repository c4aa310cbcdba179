// View > Time Display: each target's items grouped under Video and Audio headings.
#include "TimeDisplayMenu.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QMenu>

#include <map>

namespace {

// The items of a target's submenu by the heading above them, and which of them are checked.
struct Group {
    int items = 0;
    int checked = 0;
};

std::map<QString, Group> GroupsOf(QMenu& menu) {
    std::map<QString, Group> groups;
    QString heading;
    for (QAction* action : menu.actions()) {
        if (action->isSeparator()) {
            heading = action->text();
            continue;
        }
        ++groups[heading].items;
        groups[heading].checked += action->isChecked();
    }
    return groups;
}

TEST(TimeDisplayMenuTest, EachTargetShowsOneCheckedItemUnderEachOfItsHeadings) {
    host::TimeDisplayMenu menu;
    const QList<QMenu*> targets = menu.findChildren<QMenu*>();
    ASSERT_EQ(targets.size(), 2);
    for (QMenu* target : targets) {
        std::map<QString, Group> groups = GroupsOf(*target);
        ASSERT_EQ(groups.size(), 2U) << target->title().toStdString();
        EXPECT_GT(groups["Video"].items, 5);
        EXPECT_EQ(groups["Video"].checked, 1);
        EXPECT_EQ(groups["Audio"].items, 2);
        EXPECT_EQ(groups["Audio"].checked, 1);
    }
    // A choice moves the check within its own group only.
    QMenu* source = targets.front();
    for (QAction* action : source->actions()) {
        if (action->text() == "Milliseconds") {
            action->trigger();
        }
    }
    EXPECT_EQ(GroupsOf(*source)["Audio"].checked, 1);
    EXPECT_EQ(GroupsOf(*source)["Video"].checked, 1);
}

} // namespace
