#include "KSL/Exception.h"
#include "ML/FrameService.h"
#include "MediaTestSupport.h"

#include <gtest/gtest.h>

#include <vector>

namespace media_test {
namespace {

using zelmediatypes::TickTime;

BE::MasterClipSettings Bars() {
    return GeneratedClip(1920, 1080, zelmediatypes::kFrameRate_25, TickTime::FromSeconds(60));
}

TEST(FrameServiceLifecycleTest, RequestsNeedARunningServiceAndASize) {
    EXPECT_THROW(
        ML::FrameService::RequestFrame(Bars(), TickTime(), {64, 36}, ML::Refinement::kExactOnly),
        KSL::Exception);
    EXPECT_THROW(ML::FrameService::Start({.workerThreadCount = 0}), KSL::Exception);
    ML::FrameService::Start();
    EXPECT_THROW(ML::FrameService::Start(), KSL::Exception);
    for (const ML::FrameSize size : {ML::FrameSize{64, 0}, ML::FrameSize{-1, 36}}) {
        EXPECT_THROW(
            ML::FrameService::RequestFrame(Bars(), TickTime(), size, ML::Refinement::kExactOnly),
            KSL::Exception);
    }
}

TEST(FrameServiceLifecycleTest, ShutdownWithRequestsInFlightJoinsAndTheServiceRestarts) {
    ML::FrameService::Start();
    std::vector<ML::RequestID> abandoned;
    for (int second = 0; second < 40; ++second) {
        abandoned.push_back(ML::FrameService::RequestFrame(Bars(), TickTime::FromSeconds(second),
                                                           {}, ML::Refinement::kExactOnly));
    }
    ML::FrameService::Shutdown();
    EXPECT_FALSE(ML::FrameService::IsRunning());
    EXPECT_EQ(ML::FrameService::GetStatistics().framesRendered, 0u);

    ML::FrameService::Start({.workerThreadCount = 1});
    CompletionCollector collector;
    const ML::RequestID fresh = ML::FrameService::RequestFrame(
        Bars(), TickTime::FromSeconds(1), {64, 36}, ML::Refinement::kExactOnly);
    EXPECT_GT(fresh, abandoned.back());
    collector.WaitFor({fresh});
    EXPECT_EQ(collector.FinalFrame(fresh)->GetTime(), TickTime::FromSeconds(1));
    EXPECT_EQ(ML::FrameService::GetStatistics().framesRendered, 1u);
}

} // namespace
} // namespace media_test
