// One application for every test; the workspace and the shortcut manager are
// made anew for each test.
#include "KSL/StationUtils.h"
#include "UIF/ShortcutManager.h"
#include "UIF/Workspace.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace {

class FreshSingletons : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        UIF::Workspace::DestroyInstance();
        UIF::ShortcutManager::DestroyInstance();
        KSL::ResetMessaging();
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new FreshSingletons);
    return RUN_ALL_TESTS();
}
