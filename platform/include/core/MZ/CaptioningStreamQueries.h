#pragma once

#include "BE/CaptioningStreamQueries.h"

namespace MZ {

// The model-level names of the backend's stream queries; they answer alike.
inline bool QueryAvailableCaptioningStreamFormats(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                                                  std::set<zelcaptioning::StreamFormat>& formats) {
    return BE::QueryAvailableCaptioningStreamFormats(clip, formats);
}

inline KSL::InterfaceRef<BE::ICaptioningStream>
CaptioningStreamFromMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                               zelcaptioning::StreamFormat format) {
    return BE::CaptioningStreamFromMasterClip(clip, format);
}

} // namespace MZ
