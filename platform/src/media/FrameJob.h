#pragma once

#include "BE/MasterClipSettings.h"
#include "FrameCacheKey.h"
#include "ML/FrameRequest.h"
#include "zelmediatypes/TickTime.h"

namespace platform::media {

// One frame request as the workers run it; the time is already clamped into the clip.
struct FrameJob {
    ML::RequestID requestID = 0;
    BE::MasterClipSettings clip;
    zelmediatypes::TickTime frameStart;
    ML::FrameSize size;
    ML::Refinement refinement = ML::Refinement::kExactOnly;
    FrameCacheKey cacheKey;
};

} // namespace platform::media
