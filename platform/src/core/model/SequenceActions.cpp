#include "MZ/SequenceActions.h"

#include "zelmediatypes/FrameRate.h"

namespace MZ::SequenceActions {
namespace {

zelmediatypes::TimeDisplay TimecodeDisplayFor(const zelmediatypes::FrameRate& rate) {
    using namespace zelmediatypes;
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

} // namespace

zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::ISequence>& sequence,
                          bool deriveFromFrameRate) {
    if (!sequence) {
        return zelmediatypes::kTimeDisplay_Unknown;
    }
    const BE::SequenceSettings settings = sequence->GetSettings();
    if (settings.videoTimeDisplay == zelmediatypes::kTimeDisplay_Unknown && deriveFromFrameRate) {
        return TimecodeDisplayFor(settings.frameRate);
    }
    return settings.videoTimeDisplay;
}

zelmediatypes::TimeDisplay
GetAudioTimeDisplayFormat(const KSL::InterfaceRef<BE::ISequence>& sequence) {
    return sequence ? sequence->GetSettings().audioTimeDisplay
                    : zelmediatypes::kTimeDisplay_Unknown;
}

bool GetFrameAlignment(const KSL::InterfaceRef<BE::ISequence>& sequence) {
    return sequence &&
           sequence->GetSettings().frameAlignment == BE::FrameAlignment::kAlignedToFrames;
}

} // namespace MZ::SequenceActions
