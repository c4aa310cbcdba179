#include "SequenceTimeDisplayLink.h"

#include "KSL/Exception.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"
#include "UIF/HotTimecodeControl.h"
#include "UIF/TimeDisplayChoice.h"

namespace host {
namespace {

const KSL::StationID kDisplayStation(UIF::kStation_SequenceTimeDisplayChanged);

} // namespace

SequenceTimeDisplayLink::SequenceTimeDisplayLink(ProjectGetter project)
    : project_(std::move(project)) {
    KSL::StationUtils::AddListener(MZ::kStation_SequenceActivation, this);
    KSL::StationUtils::AddListener(UIF::kStation_SequenceTimeDisplayChanged, this);
}

SequenceTimeDisplayLink::~SequenceTimeDisplayLink() = default;

bool SequenceTimeDisplayLink::HandleMessage(const KSL::Message& message) {
    if (const auto* selected = message.As<MZ::SequenceSelectedMessage>()) {
        sequence_ = selected->GetSequence();
        AnnounceSettings();
    } else if (const auto* changed = message.As<MZ::SequenceSettingsChangedMessage>()) {
        if (changed->GetSequence() == sequence_) {
            AnnounceSettings();
        }
    } else if (const auto* video = message.As<UIF::HotTimecodeVideoTimeDisplayChangedMessage>()) {
        WriteDisplay(video->GetTimeDisplay());
    } else if (const auto* audio = message.As<UIF::HotTimecodeAudioTimeDisplayChangedMessage>()) {
        WriteDisplay(audio->GetTimeDisplay());
    } else {
        return false;
    }
    return true;
}

void SequenceTimeDisplayLink::AnnounceSettings() {
    if (!sequence_) {
        return;
    }
    const BE::SequenceSettings settings = sequence_->GetSettings();
    if (UIF::GetChosenVideoTimeDisplay(kDisplayStation) != settings.videoTimeDisplay) {
        UIF::AnnounceTimeDisplayChoice(kDisplayStation, settings.videoTimeDisplay);
    }
    if (UIF::GetChosenAudioTimeDisplay(kDisplayStation) != settings.audioTimeDisplay) {
        UIF::AnnounceTimeDisplayChoice(kDisplayStation, settings.audioTimeDisplay);
    }
}

void SequenceTimeDisplayLink::WriteDisplay(zelmediatypes::TimeDisplay display) {
    const KSL::InterfaceRef<BE::IProject> project = project_();
    if (!sequence_ || !project) {
        return;
    }
    BE::SequenceSettings settings = sequence_->GetSettings();
    zelmediatypes::TimeDisplay& field = zelmediatypes::IsAudioTimeDisplay(display)
                                            ? settings.audioTimeDisplay
                                            : settings.videoTimeDisplay;
    if (field == display) {
        return;
    }
    field = display;
    try {
        project->SetSequenceSettings(sequence_, settings, BE::UndoMode::kAsUndoStep);
    } catch (const KSL::Exception&) {
        sequence_.Reset(); // it left the project (another one was opened): nothing to set
    }
}

} // namespace host
