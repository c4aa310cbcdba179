#pragma once

#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "zelmediatypes/TimeDisplay.h"

namespace MZ::SequenceActions {

// The sequence's video time display. A sequence that has not chosen one
// answers kTimeDisplay_Unknown, or with deriveFromFrameRate the timecode of its
// own frame rate (drop-frame at 29.97 and 59.94; frame numbers for a rate no
// timecode display counts). An empty reference answers kTimeDisplay_Unknown.
zelmediatypes::TimeDisplay
GetVideoTimeDisplayFormat(const KSL::InterfaceRef<BE::ISequence>& sequence,
                          bool deriveFromFrameRate);

// The sequence's audio time display; kTimeDisplay_Unknown for an empty reference.
zelmediatypes::TimeDisplay
GetAudioTimeDisplayFormat(const KSL::InterfaceRef<BE::ISequence>& sequence);

// Whether times edited in the sequence snap to whole frames; false for an
// empty reference.
bool GetFrameAlignment(const KSL::InterfaceRef<BE::ISequence>& sequence);

} // namespace MZ::SequenceActions
