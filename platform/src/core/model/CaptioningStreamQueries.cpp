#include "BE/CaptioningStreamQueries.h"

namespace BE {

bool QueryAvailableCaptioningStreamFormats(const KSL::InterfaceRef<IMasterClip>& clip,
                                           std::set<zelcaptioning::StreamFormat>& formats) {
    formats.clear();
    if (!clip) {
        return false;
    }
    for (std::size_t i = 0; i < clip->GetCaptioningStreamCount(); ++i) {
        formats.insert(clip->GetCaptioningStream(i)->GetStreamFormat());
    }
    return !formats.empty();
}

KSL::InterfaceRef<ICaptioningStream>
CaptioningStreamFromMasterClip(const KSL::InterfaceRef<IMasterClip>& clip,
                               zelcaptioning::StreamFormat format) {
    return clip ? clip->FindCaptioningStream(format) : nullptr;
}

} // namespace BE
