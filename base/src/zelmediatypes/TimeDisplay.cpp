#include "zelmediatypes/TimeDisplay.h"

#include <ostream>
#include <string_view>

namespace zelmediatypes {
namespace {

std::string_view NameOf(TimeDisplay display) {
    switch (display) {
    case kTimeDisplay_23976Timecode:
        return "kTimeDisplay_23976Timecode";
    case kTimeDisplay_24Timecode:
        return "kTimeDisplay_24Timecode";
    case kTimeDisplay_25Timecode:
        return "kTimeDisplay_25Timecode";
    case kTimeDisplay_2997DropTimecode:
        return "kTimeDisplay_2997DropTimecode";
    case kTimeDisplay_2997NonDropTimecode:
        return "kTimeDisplay_2997NonDropTimecode";
    case kTimeDisplay_30Timecode:
        return "kTimeDisplay_30Timecode";
    case kTimeDisplay_50Timecode:
        return "kTimeDisplay_50Timecode";
    case kTimeDisplay_5994DropTimecode:
        return "kTimeDisplay_5994DropTimecode";
    case kTimeDisplay_5994NonDropTimecode:
        return "kTimeDisplay_5994NonDropTimecode";
    case kTimeDisplay_60Timecode:
        return "kTimeDisplay_60Timecode";
    case kTimeDisplay_Frames:
        return "kTimeDisplay_Frames";
    case kTimeDisplay_AudioSamples48kHz:
        return "kTimeDisplay_AudioSamples48kHz";
    case kTimeDisplay_Milliseconds:
        return "kTimeDisplay_Milliseconds";
    case kTimeDisplay_Unknown:
        return "kTimeDisplay_Unknown";
    }
    return {};
}

} // namespace

bool IsAudioTimeDisplay(TimeDisplay display) {
    return display == kTimeDisplay_AudioSamples48kHz || display == kTimeDisplay_Milliseconds;
}

TimeDisplay TimecodeDisplayForFrameRate(const FrameRate& rate) {
    struct RateDisplay {
        FrameRate rate;
        TimeDisplay display;
    };
    static constexpr RateDisplay kDisplays[] = {
        {kFrameRate_23976, kTimeDisplay_23976Timecode},
        {kFrameRate_24, kTimeDisplay_24Timecode},
        {kFrameRate_25, kTimeDisplay_25Timecode},
        {kFrameRate_2997, kTimeDisplay_2997DropTimecode},
        {kFrameRate_30, kTimeDisplay_30Timecode},
        {kFrameRate_50, kTimeDisplay_50Timecode},
        {kFrameRate_5994, kTimeDisplay_5994DropTimecode},
        {kFrameRate_60, kTimeDisplay_60Timecode},
    };
    for (const RateDisplay& entry : kDisplays) {
        if (entry.rate == rate) {
            return entry.display;
        }
    }
    return kTimeDisplay_Frames;
}

std::optional<FrameRate> VideoFrameRate(TimeDisplay display) {
    switch (display) {
    case kTimeDisplay_23976Timecode:
        return kFrameRate_23976;
    case kTimeDisplay_24Timecode:
        return kFrameRate_24;
    case kTimeDisplay_25Timecode:
        return kFrameRate_25;
    case kTimeDisplay_2997DropTimecode:
    case kTimeDisplay_2997NonDropTimecode:
        return kFrameRate_2997;
    case kTimeDisplay_30Timecode:
        return kFrameRate_30;
    case kTimeDisplay_50Timecode:
        return kFrameRate_50;
    case kTimeDisplay_5994DropTimecode:
    case kTimeDisplay_5994NonDropTimecode:
        return kFrameRate_5994;
    case kTimeDisplay_60Timecode:
        return kFrameRate_60;
    case kTimeDisplay_Frames:
    case kTimeDisplay_AudioSamples48kHz:
    case kTimeDisplay_Milliseconds:
    case kTimeDisplay_Unknown:
        break;
    }
    return std::nullopt;
}

bool IsDropFrame(TimeDisplay display) {
    return display == kTimeDisplay_2997DropTimecode || display == kTimeDisplay_5994DropTimecode;
}

std::ostream& operator<<(std::ostream& os, TimeDisplay display) {
    const std::string_view name = NameOf(display);
    if (name.empty()) {
        return os << "TimeDisplay(" << static_cast<std::int32_t>(display) << ')';
    }
    return os << name;
}

} // namespace zelmediatypes
