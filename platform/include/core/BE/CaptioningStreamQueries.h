#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/StreamFormat.h"

#include <set>

namespace BE {

// Fills formats with the formats of the clip's caption streams (emptied first;
// an empty clip reference gives none). Returns whether any was found.
bool QueryAvailableCaptioningStreamFormats(const KSL::InterfaceRef<IMasterClip>& clip,
                                           std::set<zelcaptioning::StreamFormat>& formats);

// The clip's stream of that format, or an empty reference.
KSL::InterfaceRef<ICaptioningStream>
CaptioningStreamFromMasterClip(const KSL::InterfaceRef<IMasterClip>& clip,
                               zelcaptioning::StreamFormat format);

} // namespace BE
