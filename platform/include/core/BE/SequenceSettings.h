#pragma once

#include "zelcore/UTF16String.h"
#include "zelcore/geom/Rect.h"
#include "zelmediatypes/FrameRate.h"
#include "zelmediatypes/TimeDisplay.h"

namespace BE {

// Whether times edited in a sequence snap to whole frames.
enum class FrameAlignment { kFree, kAlignedToFrames };

// A sequence's picture and how it shows time: the formats of its video and
// audio time displays. A display may be kTimeDisplay_Unknown (not chosen yet).
struct SequenceSettings {
    zelcore::UTF16String name;
    zelcore::geom::RectT<int> frameRect;
    zelmediatypes::FrameRate frameRate = zelmediatypes::kFrameRate_2997;
    zelmediatypes::TimeDisplay videoTimeDisplay = zelmediatypes::kTimeDisplay_2997DropTimecode;
    zelmediatypes::TimeDisplay audioTimeDisplay = zelmediatypes::kTimeDisplay_AudioSamples48kHz;
    FrameAlignment frameAlignment = FrameAlignment::kAlignedToFrames;

    friend bool operator==(const SequenceSettings&, const SequenceSettings&) = default;
};

} // namespace BE
