#include "SettingsEdits.h"

#include "BE/ProjectMessages.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"
#include "file/SettingsJson.h"
#include "journal/EditTargets.h"

#include <utility>

namespace platform::core {
namespace {

void AnnouncePropertiesChanged(KSL::InterfaceRef<BE::IProjectItem> item) {
    std::vector<KSL::InterfaceRef<BE::IProjectItem>> items{std::move(item)};
    KSL::StationUtils::BroadcastMessage(MZ::kStation_Info,
                                        BE::PropertiesChangedMessage(std::move(items)));
}

} // namespace

ClipSettingsEdit::ClipSettingsEdit(KSL::InterfaceRef<MasterClip> clip,
                                   BE::MasterClipSettings settings)
    : clip_(std::move(clip))
    , otherSettings_(std::move(settings)) {}

bool ClipSettingsEdit::Swap() {
    BE::MasterClipSettings current = clip_->GetSettings();
    clip_->SetSettings(std::exchange(otherSettings_, std::move(current)));
    KSL::StationUtils::BroadcastMessage(
        clip_->GetStationID(),
        BE::MasterClipClipChangedMessage(KSL::InterfaceRef<BE::IMasterClip>(clip_)));
    AnnouncePropertiesChanged(KSL::InterfaceRef<BE::IProjectItem>(clip_));
    return true;
}

SequenceSettingsEdit::SequenceSettingsEdit(KSL::InterfaceRef<Sequence> sequence,
                                           BE::SequenceSettings settings)
    : sequence_(std::move(sequence))
    , otherSettings_(std::move(settings)) {}

bool SequenceSettingsEdit::Swap() {
    BE::SequenceSettings current = sequence_->GetSettings();
    sequence_->SetSettings(std::exchange(otherSettings_, std::move(current)));
    AnnouncePropertiesChanged(KSL::InterfaceRef<BE::IProjectItem>(sequence_));
    const MZ::SequenceSettingsChangedMessage message{KSL::InterfaceRef<BE::ISequence>(sequence_)};
    KSL::StationUtils::BroadcastMessage(sequence_->GetStationID(), message);
    KSL::StationUtils::BroadcastMessage(MZ::kStation_SequenceActivation, message);
    return true;
}

std::string ClipSettingsEdit::Describe() const {
    QJsonObject settings;
    WriteClipSettings(otherSettings_, "settings", settings);
    EditDescription description("clipSettings");
    return std::move(AddPlace(*clip_, description).Object("settings", settings)).Finish();
}

std::string SequenceSettingsEdit::Describe() const {
    QJsonObject settings;
    WriteSequenceSettings(otherSettings_, "settings", settings);
    EditDescription description("sequenceSettings");
    return std::move(AddPlace(*sequence_, description).Object("settings", settings)).Finish();
}

} // namespace platform::core
