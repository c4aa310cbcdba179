#include "FrameCache.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using platform::media::FrameCache;
using platform::media::FrameCacheKey;

VF::VideoFrameRef Frame() {
    return std::make_shared<const VF::VideoFrame>(16, 16);
}

FrameCacheKey KeyAt(std::int64_t ticks) {
    return {"file:/clip.mp4", ticks, 16, 16};
}

TEST(FrameCacheTest, DropsTheLeastRecentlyUsedFrameToStayWithinBudget) {
    const std::size_t frameBytes = Frame()->GetByteCount();
    FrameCache cache(3 * frameBytes);
    const VF::VideoFrameRef a = Frame();
    cache.Insert(KeyAt(1), a);
    cache.Insert(KeyAt(2), Frame());
    cache.Insert(KeyAt(3), Frame());
    EXPECT_EQ(cache.Find(KeyAt(1)), a); // now the most recently used

    cache.Insert(KeyAt(4), Frame());
    EXPECT_EQ(cache.Find(KeyAt(2)), nullptr);
    EXPECT_EQ(cache.Find(KeyAt(1)), a);
    EXPECT_NE(cache.Find(KeyAt(3)), nullptr);
    EXPECT_NE(cache.Find(KeyAt(4)), nullptr);
    EXPECT_EQ(cache.GetFrameCount(), 3u);
    EXPECT_EQ(cache.GetBytes(), 3 * frameBytes);
}

TEST(FrameCacheTest, KeysDifferBySizeAndReplacingKeepsOneEntry) {
    FrameCache cache(1 << 20);
    cache.Insert(KeyAt(1), Frame());
    EXPECT_EQ(cache.Find({"file:/clip.mp4", 1, 32, 16}), nullptr);
    EXPECT_EQ(cache.Find({"file:/other.mp4", 1, 16, 16}), nullptr);

    const VF::VideoFrameRef replacement = Frame();
    cache.Insert(KeyAt(1), replacement);
    EXPECT_EQ(cache.Find(KeyAt(1)), replacement);
    EXPECT_EQ(cache.GetFrameCount(), 1u);
}

TEST(FrameCacheTest, AFrameLargerThanTheBudgetIsNotKept) {
    FrameCache cache(Frame()->GetByteCount() - 1);
    cache.Insert(KeyAt(1), Frame());
    EXPECT_EQ(cache.Find(KeyAt(1)), nullptr);
    EXPECT_EQ(cache.GetBytes(), 0u);
}

} // namespace
