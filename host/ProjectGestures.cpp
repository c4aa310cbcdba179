#include "ProjectGestures.h"

#include "BE/IBin.h"
#include "HSL/Messages.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Stations.h"

namespace host::ProjectGestures {

void AnnounceSelection(const KSL::InterfaceRef<BE::IProjectItem>& item) {
    using KSL::StationUtils::BroadcastMessage;
    if (!item) {
        BroadcastMessage(MZ::kStation_MasterClipActivation, MZ::MasterClipSelectedMessage({}));
        return;
    }
    switch (item->GetItemKind()) {
    case BE::ProjectItemKind::kBin:
        BroadcastMessage(MZ::kStation_BinActivation,
                         MZ::BinSelectedMessage(item.QueryInterface<BE::IBin>()));
        break;
    case BE::ProjectItemKind::kMasterClip:
        BroadcastMessage(MZ::kStation_MasterClipActivation,
                         MZ::MasterClipSelectedMessage(item.QueryInterface<BE::IMasterClip>()));
        break;
    case BE::ProjectItemKind::kCaptioningStream:
        BroadcastMessage(MZ::kStation_MasterClipActivation,
                         MZ::MasterClipSelectedMessage(
                             item.QueryInterface<BE::ICaptioningStream>()->GetMasterClip()));
        break;
    case BE::ProjectItemKind::kSequence:
        BroadcastMessage(MZ::kStation_SequenceActivation,
                         MZ::SequenceSelectedMessage(item.QueryInterface<BE::ISequence>()));
        break;
    }
}

void AnnounceStreamOpened(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) {
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_ClosedCaptionsActivation,
        MZ::ClosedCaptionsOpenedMessage(stream->GetMasterClip(), stream));
}

void AnnounceTrackItemOpened(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                             const KSL::InterfaceRef<BE::ISequence>& sequence) {
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_ClosedCaptionsActivation,
        MZ::CaptioningTrackItemOpenedMessage({stream->GetMasterClip(), stream, sequence}));
}

void AnnounceSourceClipOpened(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    KSL::StationUtils::BroadcastMessage(
        HSL::SourceClipSelectedMessage::kStation,
        HSL::SourceClipSelectedMessage(HSL::SourceClipSelectedMessage::kKind_MasterClip, clip));
}

void AnnounceClipClosed(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    KSL::StationUtils::BroadcastMessage(MZ::kStation_MasterClipActivation,
                                        MZ::MasterClipClosedMessage(clip));
}

} // namespace host::ProjectGestures
