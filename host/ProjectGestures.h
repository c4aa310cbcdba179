#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/IProjectItem.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"

// What the project panel's gestures announce to the panels, on the stations
// the messages name.
namespace host::ProjectGestures {

// The user selected the item: a bin (MZ::BinSelectedMessage), a master clip or
// one of its caption streams (MZ::MasterClipSelectedMessage with the clip), or
// a sequence (MZ::SequenceSelectedMessage). An empty item means the selection
// was cleared: MZ::MasterClipSelectedMessage with no clip.
void AnnounceSelection(const KSL::InterfaceRef<BE::IProjectItem>& item);

// The user opened a caption stream of a clip for editing (MZ::ClosedCaptionsOpenedMessage).
void AnnounceStreamOpened(const KSL::InterfaceRef<BE::ICaptioningStream>& stream);

// The user opened a caption stream as used in a sequence
// (MZ::CaptioningTrackItemOpenedMessage).
void AnnounceTrackItemOpened(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                             const KSL::InterfaceRef<BE::ISequence>& sequence);

// The user opened a master clip in the source monitor (HSL::SourceClipSelectedMessage).
void AnnounceSourceClipOpened(const KSL::InterfaceRef<BE::IMasterClip>& clip);

// The user closed a master clip (MZ::MasterClipClosedMessage).
void AnnounceClipClosed(const KSL::InterfaceRef<BE::IMasterClip>& clip);

} // namespace host::ProjectGestures
