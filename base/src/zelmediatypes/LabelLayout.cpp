#include "LabelLayout.h"

#include <optional>
#include <stdexcept>
#include <string>

namespace zelmediatypes::detail {
namespace {

constexpr std::int64_t kSamplesPerSecond48kHz = 48000;
constexpr std::int64_t kMillisecondsPerSecond = 1000;
static_assert(kTicksPerSecond % kSamplesPerSecond48kHz == 0);
static_assert(kTicksPerSecond % kMillisecondsPerSecond == 0);

constexpr std::int64_t kLabelSecondsPerMinute = 60;
constexpr std::int64_t kMinutesPerDropCycle = 10;

} // namespace

LabelLayout LayoutFor(TimeDisplay display, const FrameRate& mediaRate) {
    if (const std::optional<FrameRate> rate = VideoFrameRate(display)) {
        const std::int64_t framesPerLabelSecond = rate->TimecodeFramesPerSecond();
        // Two labels a minute per 30 frames a second: 2 at 29.97, 4 at 59.94.
        const std::int64_t dropped = IsDropFrame(display) ? framesPerLabelSecond / 15 : 0;
        return {LabelShape::kClock,
                rate->TicksPerFrame(),
                framesPerLabelSecond,
                2,
                dropped != 0 ? ';' : ':',
                dropped,
                "frame"};
    }
    switch (display) {
    case kTimeDisplay_Frames:
        return {LabelShape::kCount, mediaRate.TicksPerFrame(), 0, 0, '\0', 0, "frame"};
    case kTimeDisplay_AudioSamples48kHz:
        return {LabelShape::kClock,
                kTicksPerSecond / kSamplesPerSecond48kHz,
                kSamplesPerSecond48kHz,
                5,
                ':',
                0,
                "sample"};
    case kTimeDisplay_Milliseconds:
        return {LabelShape::kClock,
                kTicksPerSecond / kMillisecondsPerSecond,
                kMillisecondsPerSecond,
                3,
                '.',
                0,
                "millisecond"};
    default:
        throw std::invalid_argument("time display " + std::to_string(display) + " has no labels");
    }
}

std::int64_t LabelNumberOfUnit(const LabelLayout& layout, std::int64_t unitIndex) {
    const std::int64_t dropped = layout.droppedLabelsPerMinute;
    if (dropped == 0) {
        return unitIndex;
    }
    // Each cycle of ten minutes starts with a minute that keeps all its labels, followed by nine
    // that each leave out `dropped`.
    const std::int64_t labelsPerMinute = layout.unitsPerLabelSecond * kLabelSecondsPerMinute;
    const std::int64_t unitsPerShortMinute = labelsPerMinute - dropped;
    const std::int64_t unitsPerCycle =
        labelsPerMinute * kMinutesPerDropCycle - dropped * (kMinutesPerDropCycle - 1);
    const std::int64_t cycles = unitIndex / unitsPerCycle;
    const std::int64_t unitInCycle = unitIndex % unitsPerCycle;
    const std::int64_t shortMinutesInCycle =
        unitInCycle < labelsPerMinute ? 0 : (unitInCycle - dropped) / unitsPerShortMinute;
    return unitIndex + dropped * ((kMinutesPerDropCycle - 1) * cycles + shortMinutesInCycle);
}

std::int64_t UnitOfLabelNumber(const LabelLayout& layout, std::int64_t labelNumber) {
    const std::int64_t labelsPerMinute = layout.unitsPerLabelSecond * kLabelSecondsPerMinute;
    const std::int64_t minutes = labelNumber / labelsPerMinute;
    const std::int64_t shortMinutes = minutes - minutes / kMinutesPerDropCycle;
    return labelNumber - layout.droppedLabelsPerMinute * shortMinutes;
}

} // namespace zelmediatypes::detail
