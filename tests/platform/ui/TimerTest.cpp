#include "UIF/SubView.h"
#include "UIF/Workspace.h"
#include "UiTestSupport.h"
#include "zelui/ui/UI_NodeManager.h"

#include <QElapsedTimer>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include <map>
#include <set>

namespace platform_ui_test {
namespace {

class TimedPane : public UIF::SubView {
public:
    using UIF::SubView::SubView;
    std::map<UIF::TimerID, int> fired;
    UIF::TimerID removeOnFire = 0;

protected:
    void TimerFired(UIF::TimerID id) override {
        ++fired[id];
        if (id == removeOnFire) {
            RemoveTimer(id);
        }
    }
};

class TimerTest : public testing::Test {
protected:
    TimerTest() {
        UIF::Workspace::Instance()->CreateOrReanimateTabView(u"timers", {});
        creator.view->AddSubView(pane);
    }
    RecordingCreator creator{u"timers"};
    TimedPane pane{creator.view.get()};
};

TEST_F(TimerTest, UniqueTimerIDsAreNeverRepeated) {
    std::set<std::uint32_t> ids;
    for (int i = 0; i < 100; ++i) {
        const std::uint32_t id = zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID();
        EXPECT_NE(id, 0u);
        ids.insert(id);
    }
    zelui::ui::UI_NodeManager::Destroy();
    ids.insert(zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID());
    EXPECT_EQ(ids.size(), 101u);
}

TEST_F(TimerTest, TimerRepeatsUntilRemoved) {
    const UIF::TimerID poll = zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID();
    pane.SetTimer(poll, 10);
    EXPECT_TRUE(pane.HasTimer(poll));
    QTRY_VERIFY_WITH_TIMEOUT(pane.fired[poll] >= 3, 2000);

    pane.RemoveTimer(poll);
    EXPECT_FALSE(pane.HasTimer(poll));
    const int firedBefore = pane.fired[poll];
    QTest::qWait(50);
    EXPECT_EQ(pane.fired[poll], firedBefore);
}

TEST_F(TimerTest, TimerRemovedFromItsOwnHookFiresOnce) {
    const UIF::TimerID deferred = zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID();
    pane.removeOnFire = deferred;
    pane.SetTimer(deferred, 5);
    QTRY_VERIFY_WITH_TIMEOUT(pane.fired[deferred] == 1, 2000);
    QTest::qWait(40);
    EXPECT_EQ(pane.fired[deferred], 1);
}

TEST_F(TimerTest, SettingARunningTimerAgainRestartsItsInterval) {
    const UIF::TimerID restarted = zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID();
    pane.SetTimer(restarted, 60);
    QElapsedTimer clock;
    clock.start();
    QTest::qWait(40);
    pane.SetTimer(restarted, 60);
    QTRY_VERIFY_WITH_TIMEOUT(pane.fired[restarted] == 1, 2000);
    EXPECT_GE(clock.elapsed(), 95);
}

TEST_F(TimerTest, DestroyedViewStopsItsTimers) {
    const UIF::TimerID id = zelui::ui::UI_NodeManager::Get()->GetUniqueTimerID();
    {
        TimedPane transient(creator.view.get());
        creator.view->AddSubView(transient);
        transient.SetTimer(id, 5);
    }
    // A timer outliving its view would call into freed memory here, which the
    // sanitizer build reports.
    QTest::qWait(30);
}

} // namespace
} // namespace platform_ui_test
