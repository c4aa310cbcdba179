#include "MZ/MasterClipActions.h"

namespace MZ::MasterClipActions {

zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    return clip ? zelmediatypes::TimecodeDisplayForFrameRate(clip->GetSettings().frameRate)
                : zelmediatypes::kTimeDisplay_Unknown;
}

zelmediatypes::TimeDisplay
GetAudioTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    return clip ? zelmediatypes::kTimeDisplay_AudioSamples48kHz
                : zelmediatypes::kTimeDisplay_Unknown;
}

} // namespace MZ::MasterClipActions
