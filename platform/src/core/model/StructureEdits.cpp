#include "StructureEdits.h"

#include "BE/ProjectMessages.h"
#include "KSL/StationUtils.h"
#include "MZ/ActivationMessages.h"
#include "MZ/Stations.h"
#include "Project.h"
#include "file/JsonValues.h"
#include "file/SettingsJson.h"
#include "journal/EditTargets.h"

#include <algorithm>

namespace platform::core {
namespace {

void AnnounceStructureChange(const Project* project, KSL::InterfaceRef<BE::IProjectItem> item,
                             BE::ProjectStructureChangeKind kind) {
    if (project) {
        KSL::StationUtils::BroadcastMessage(
            project->GetStationID(), BE::ProjectStructureChangedMessage(std::move(item), kind));
    }
}

template <typename T>
std::optional<std::size_t> IndexIn(const std::vector<KSL::InterfaceRef<T>>& items, const T* item) {
    auto found = std::find_if(items.begin(), items.end(),
                              [item](const auto& candidate) { return candidate.Get() == item; });
    if (found == items.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - items.begin());
}

} // namespace

AddBinEdit::AddBinEdit(Project& project, KSL::InterfaceRef<Bin> bin)
    : project_(project)
    , bin_(std::move(bin)) {}

bool AddBinEdit::Apply() {
    if (bin_->GetProject()) {
        return false;
    }
    project_.InsertBin(project_.GetBins().size(), bin_);
    AnnounceStructureChange(&project_, KSL::InterfaceRef<BE::IProjectItem>(bin_),
                            BE::ProjectStructureChangeKind::kAdded);
    return true;
}

bool AddBinEdit::Revert() {
    const auto index = IndexIn(project_.GetBins(), bin_.Get());
    if (!index) {
        return false;
    }
    project_.RemoveBin(*index);
    AnnounceStructureChange(&project_, KSL::InterfaceRef<BE::IProjectItem>(bin_),
                            BE::ProjectStructureChangeKind::kRemoved);
    return true;
}

ClipMembershipEdit::ClipMembershipEdit(KSL::InterfaceRef<Bin> bin,
                                       KSL::InterfaceRef<MasterClip> clip, Membership applied)
    : bin_(std::move(bin))
    , clip_(std::move(clip))
    , applied_(applied)
    , index_(bin_->GetClips().size()) {}

bool ClipMembershipEdit::Apply() {
    return applied_ == Membership::kAdd ? Insert() : Remove();
}
bool ClipMembershipEdit::Revert() {
    return applied_ == Membership::kAdd ? Remove() : Insert();
}

bool ClipMembershipEdit::Insert() {
    if (clip_->GetOwner() || index_ > bin_->GetClips().size()) {
        return false;
    }
    bin_->InsertClip(index_, clip_);
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(clip_),
                            BE::ProjectStructureChangeKind::kAdded);
    return true;
}

bool ClipMembershipEdit::Remove() {
    const auto index = IndexIn(bin_->GetClips(), clip_.Get());
    if (!index) {
        return false;
    }
    index_ = *index;
    bin_->RemoveClip(index_);
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_MasterClipActivation,
        MZ::MasterClipClosedMessage(KSL::InterfaceRef<BE::IMasterClip>(clip_)));
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(clip_),
                            BE::ProjectStructureChangeKind::kRemoved);
    return true;
}

AddSequenceEdit::AddSequenceEdit(KSL::InterfaceRef<Bin> bin, KSL::InterfaceRef<Sequence> sequence)
    : bin_(std::move(bin))
    , sequence_(std::move(sequence)) {}

bool AddSequenceEdit::Apply() {
    if (sequence_->GetOwner()) {
        return false;
    }
    bin_->InsertSequence(bin_->GetSequences().size(), sequence_);
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(sequence_),
                            BE::ProjectStructureChangeKind::kAdded);
    return true;
}

bool AddSequenceEdit::Revert() {
    const auto index = IndexIn(bin_->GetSequences(), sequence_.Get());
    if (!index) {
        return false;
    }
    bin_->RemoveSequence(*index);
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(sequence_),
                            BE::ProjectStructureChangeKind::kRemoved);
    return true;
}

std::string AddBinEdit::Describe() const {
    EditDescription description("addBin");
    return std::move(description.Text("name", zelcore::View(bin_->GetName()))).Finish();
}

std::string ClipMembershipEdit::Describe() const {
    if (applied_ == Membership::kAdd) {
        QJsonObject settings;
        WriteClipSettings(clip_->GetSettings(), "settings", settings);
        EditDescription description("addClip");
        return std::move(AddPlace(*bin_, description).Object("settings", settings)).Finish();
    }
    EditDescription description("removeClip");
    return std::move(AddPlace(*clip_, description)).Finish();
}

std::string AddSequenceEdit::Describe() const {
    QJsonObject settings;
    WriteSequenceSettings(sequence_->GetSettings(), "settings", settings);
    EditDescription description("addSequence");
    return std::move(AddPlace(*bin_, description).Object("settings", settings)).Finish();
}

RemoveSequenceEdit::RemoveSequenceEdit(KSL::InterfaceRef<Bin> bin,
                                       KSL::InterfaceRef<Sequence> sequence)
    : bin_(std::move(bin))
    , sequence_(std::move(sequence)) {}

bool RemoveSequenceEdit::Apply() {
    const auto index = IndexIn(bin_->GetSequences(), sequence_.Get());
    if (!index) {
        return false;
    }
    index_ = *index;
    bin_->RemoveSequence(index_);
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(sequence_),
                            BE::ProjectStructureChangeKind::kRemoved);
    return true;
}

bool RemoveSequenceEdit::Revert() {
    if (sequence_->GetOwner() || index_ > bin_->GetSequences().size()) {
        return false;
    }
    bin_->InsertSequence(index_, sequence_);
    AnnounceStructureChange(bin_->GetProject(), KSL::InterfaceRef<BE::IProjectItem>(sequence_),
                            BE::ProjectStructureChangeKind::kAdded);
    return true;
}

std::string RemoveSequenceEdit::Describe() const {
    EditDescription description("removeSequence");
    return std::move(AddPlace(*sequence_, description)).Finish();
}

} // namespace platform::core
