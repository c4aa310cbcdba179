#include "DigitFont.h"
#include "ML/FrameService.h"
#include "MediaTestSupport.h"
#include "TestSourceRenderer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace media_test {
namespace {

using platform::media::TestSourceRenderer;
using zelmediatypes::TickTime;

constexpr std::array<std::array<std::uint8_t, 3>, 7> kBarColors = {{{191, 191, 191},
                                                                    {191, 191, 0},
                                                                    {0, 191, 191},
                                                                    {0, 191, 0},
                                                                    {191, 0, 191},
                                                                    {191, 0, 0},
                                                                    {0, 0, 191}}};

TickTime Frame2997(std::int64_t frameIndex) {
    return TickTime(frameIndex * zelmediatypes::kFrameRate_2997.TicksPerFrame());
}

// Reads the burnt-in label back glyph by glyph, sampling the middle of each font pixel.
std::string ReadTimecode(const VF::VideoFrame& frame, std::size_t labelLength) {
    namespace font = platform::media::DigitFont;
    const auto placement = TestSourceRenderer::PlaceTimecode(
        std::string(labelLength, '0'), frame.GetWidthPx(), frame.GetHeightPx());
    std::string label;
    for (std::size_t index = 0; index < labelLength; ++index) {
        font::Glyph seen{};
        for (int row = 0; row < font::kGlyphHeightPx; ++row) {
            for (int column = 0; column < font::kGlyphWidthPx; ++column) {
                const int x =
                    placement.xPx +
                    (static_cast<int>(index) * font::kAdvancePx + column) * placement.scale +
                    placement.scale / 2;
                const int y = placement.yPx + row * placement.scale + placement.scale / 2;
                if (frame.GetRow(y)[4 * x] > 128) {
                    seen[row] |= static_cast<std::uint8_t>(1 << (font::kGlyphWidthPx - 1 - column));
                }
            }
        }
        char match = '?';
        for (char candidate : std::string("0123456789:;.-")) {
            if (*font::FindGlyph(candidate) == seen) {
                match = candidate;
            }
        }
        label += match;
    }
    return label;
}

TEST(GeneratedSourceTest, BurnsInTheDropFrameTimecodeOfEachFrameAt2997) {
    const struct {
        std::int64_t frameIndex;
        const char* label;
    } cases[] = {
        {0, "00:00:00;00"},    {1, "00:00:00;01"},     {1799, "00:00:59;29"},
        {1800, "00:01:00;02"}, {17982, "00:10:00;00"},
    };
    for (const auto& c : cases) {
        for (const auto& [widthPx, heightPx] : {std::pair{1920, 1080}, std::pair{114, 64}}) {
            const VF::VideoFrame frame = TestSourceRenderer::Render(
                Frame2997(c.frameIndex), zelmediatypes::kFrameRate_2997, widthPx, heightPx);
            EXPECT_EQ(ReadTimecode(frame, 11), c.label) << widthPx << "x" << heightPx;
        }
    }
}

TEST(GeneratedSourceTest, NonDropRatesCountWholeSecondsAndOddRatesCountFrames) {
    const VF::VideoFrame at25 = TestSourceRenderer::Render(TickTime::FromSeconds(61),
                                                           zelmediatypes::kFrameRate_25, 640, 360);
    EXPECT_EQ(ReadTimecode(at25, 11), "00:01:01:00");
    const auto rate15 = zelmediatypes::FrameRate::FromFramesPerSecond(15, 1).value();
    const VF::VideoFrame at15 =
        TestSourceRenderer::Render(TickTime::FromSeconds(2), rate15, 640, 360);
    EXPECT_EQ(ReadTimecode(at15, 2), "30");
}

class GeneratedSourceRequestTest : public testing::Test {
protected:
    void SetUp() override { ML::FrameService::Start({.workerThreadCount = 2}); }

    VF::VideoFrameRef FrameAt(TickTime time, ML::FrameSize size) {
        const ML::RequestID id =
            ML::FrameService::RequestFrame(clip_, time, size, ML::Refinement::kKeyframeFirst);
        const std::vector<Completion> messages = collector_.WaitFor({id});
        EXPECT_EQ(messages.size(), 1u) << "a generated frame is exact at once";
        return collector_.FinalFrame(id);
    }

    BE::MasterClipSettings clip_ =
        GeneratedClip(1920, 1080, zelmediatypes::kFrameRate_2997, TickTime::FromSeconds(600));
    CompletionCollector collector_;
};

TEST_F(GeneratedSourceRequestTest, FramesShowBarsAndDifferOnlyInTheirTimecode) {
    const VF::VideoFrameRef first = FrameAt(Frame2997(100), {});
    const VF::VideoFrameRef next = FrameAt(Frame2997(101), {});
    ASSERT_EQ(first->GetWidthPx(), 1920);
    ASSERT_EQ(first->GetHeightPx(), 1080);
    EXPECT_EQ(first->GetTime(), Frame2997(100));
    for (std::size_t bar = 0; bar < kBarColors.size(); ++bar) {
        const std::uint8_t* pixel = first->GetRow(300) + 4 * ((2 * bar + 1) * 1920 / 14);
        EXPECT_EQ((std::array{pixel[0], pixel[1], pixel[2], pixel[3]}),
                  (std::array<std::uint8_t, 4>{kBarColors[bar][0], kBarColors[bar][1],
                                               kBarColors[bar][2], 255}))
            << "bar " << bar;
    }
    int differingRowsAboveBand = 0;
    int differingRowsInBand = 0;
    for (int y = 0; y < 1080; ++y) {
        if (!std::equal(first->GetRow(y), first->GetRow(y) + 1920 * 4, next->GetRow(y))) {
            (y < 810 ? differingRowsAboveBand : differingRowsInBand) += 1;
        }
    }
    EXPECT_EQ(differingRowsAboveBand, 0);
    EXPECT_GT(differingRowsInBand, 0);
}

TEST_F(GeneratedSourceRequestTest, ThumbnailsAreDrawnSmallAndCached) {
    const VF::VideoFrameRef thumbnail = FrameAt(Frame2997(42), {114, 64});
    ASSERT_EQ(thumbnail->GetWidthPx(), 114);
    ASSERT_EQ(thumbnail->GetHeightPx(), 64);
    EXPECT_EQ(ReadTimecode(*thumbnail, 11), "00:00:01;12");
    EXPECT_EQ(FrameAt(Frame2997(42), {114, 64}), thumbnail);
    EXPECT_EQ(ML::FrameService::GetStatistics().framesRendered, 1u);
}

} // namespace
} // namespace media_test
