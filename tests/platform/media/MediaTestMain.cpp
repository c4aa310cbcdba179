#include "KSL/StationUtils.h"
#include "ML/FrameService.h"

extern "C" {
#include <libavutil/log.h>
}

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace {

// The frame service and the messages it posted must not leak from one test into the next.
class ResetMediaStateAfterEachTest : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo&) override {
        ML::FrameService::Shutdown();
        KSL::ResetMessaging();
        QCoreApplication::processEvents();
    }
};

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    // Damaged media are tested on purpose; their decoder complaints would only be noise.
    av_log_set_level(AV_LOG_QUIET);
    testing::InitGoogleTest(&argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new ResetMediaStateAfterEachTest);
    return RUN_ALL_TESTS();
}
