#include "MZ/SequenceActions.h"

#include "zelmediatypes/FrameRate.h"

namespace MZ::SequenceActions {
zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::ISequence>& sequence,
                          bool deriveFromFrameRate) {
    if (!sequence) {
        return zelmediatypes::kTimeDisplay_Unknown;
    }
    const BE::SequenceSettings settings = sequence->GetSettings();
    if (settings.videoTimeDisplay == zelmediatypes::kTimeDisplay_Unknown && deriveFromFrameRate) {
        return zelmediatypes::TimecodeDisplayForFrameRate(settings.frameRate);
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
