#include "MZ/MasterClipActions.h"

namespace MZ::MasterClipActions {

zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    if (!clip) {
        return zelmediatypes::kTimeDisplay_Unknown;
    }
    const BE::MasterClipSettings settings = clip->GetSettings();
    return settings.videoTimeDisplay != zelmediatypes::kTimeDisplay_Unknown
               ? settings.videoTimeDisplay
               : zelmediatypes::TimecodeDisplayForFrameRate(settings.frameRate);
}

zelmediatypes::TimeDisplay
GetAudioTimeDisplayFormat(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    return clip ? zelmediatypes::kTimeDisplay_AudioSamples48kHz
                : zelmediatypes::kTimeDisplay_Unknown;
}

} // namespace MZ::MasterClipActions
