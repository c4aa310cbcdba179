#include "UiTestSupport.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace {

// Host-wide state must not leak from one test into the next.
class ResetHostStateAfterEachTest : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override { platform_ui_test::ResetHostState(); }
};

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new ResetHostStateAfterEachTest);
    return RUN_ALL_TESTS();
}
