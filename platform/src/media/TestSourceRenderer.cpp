#include "TestSourceRenderer.h"

#include "DigitFont.h"
#include "zelmediatypes/TimeDisplay.h"
#include "zelmediatypes/TimeLabel.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace platform::media {
namespace {

using Rgb = std::array<std::uint8_t, 3>;

constexpr std::array<Rgb, 7> kUpperBars = {{{191, 191, 191},
                                            {191, 191, 0},
                                            {0, 191, 191},
                                            {0, 191, 0},
                                            {191, 0, 191},
                                            {191, 0, 0},
                                            {0, 0, 191}}};
constexpr std::array<Rgb, 7> kReversedBars = {{{0, 0, 191},
                                               {19, 19, 19},
                                               {191, 0, 191},
                                               {19, 19, 19},
                                               {0, 191, 191},
                                               {19, 19, 19},
                                               {191, 191, 191}}};

void FillRows(VF::VideoFrame& frame, int topPx, int bottomPx, const std::array<Rgb, 7>& bars) {
    const int widthPx = frame.GetWidthPx();
    for (int y = topPx; y < bottomPx; ++y) {
        std::uint8_t* pixel = frame.GetRow(y);
        for (int x = 0; x < widthPx; ++x, pixel += 4) {
            const Rgb& color = bars[static_cast<std::size_t>(x * 7 / widthPx)];
            std::copy(color.begin(), color.end(), pixel);
        }
    }
}

} // namespace

std::string TestSourceRenderer::TimecodeLabel(zelmediatypes::TickTime frameStart,
                                              const zelmediatypes::FrameRate& rate) {
    return zelmediatypes::FormatTimeLabel(frameStart,
                                          zelmediatypes::TimecodeDisplayForFrameRate(rate), rate);
}

TimecodePlacement TestSourceRenderer::PlaceTimecode(std::string_view label, int widthPx,
                                                    int heightPx) {
    const int bandTopPx = heightPx * 3 / 4;
    const int bandHeightPx = heightPx - bandTopPx;
    const int labelUnitsWide =
        std::max<int>(1, static_cast<int>(label.size())) * DigitFont::kAdvancePx;
    // The label takes at most 60% of the band's height and 90% of the frame's width.
    const int scale = std::max(1, std::min(bandHeightPx * 6 / (10 * DigitFont::kGlyphHeightPx),
                                           widthPx * 9 / (10 * labelUnitsWide)));
    return {(widthPx - labelUnitsWide * scale) / 2,
            bandTopPx + (bandHeightPx - DigitFont::kGlyphHeightPx * scale) / 2, scale};
}

VF::VideoFrame TestSourceRenderer::Render(zelmediatypes::TickTime frameStart,
                                          const zelmediatypes::FrameRate& rate, int widthPx,
                                          int heightPx) {
    VF::VideoFrame frame(widthPx, heightPx);
    frame.SetTime(frameStart);
    if (frame.IsEmpty()) {
        return frame;
    }
    FillRows(frame, 0, heightPx * 2 / 3, kUpperBars);
    FillRows(frame, heightPx * 2 / 3, heightPx * 3 / 4, kReversedBars);
    const std::string label = TimecodeLabel(frameStart, rate);
    const TimecodePlacement placement = PlaceTimecode(label, widthPx, heightPx);
    DigitFont::DrawText(frame, placement.xPx, placement.yPx, placement.scale, label,
                        {255, 255, 255, 255});
    return frame;
}

} // namespace platform::media
