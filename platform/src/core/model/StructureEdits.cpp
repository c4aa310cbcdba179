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

std::string DescribeSequenceInsert(const Bin& bin, const Sequence& sequence, std::size_t index) {
    QJsonObject settings;
    WriteSequenceSettings(sequence.GetSettings(), "settings", settings);
    EditDescription description("addSequence");
    return std::move(AddPlace(bin, description).Object("settings", settings).Index("index", index))
        .Finish();
}

std::string DescribeSequenceRemove(const Sequence& sequence) {
    EditDescription description("removeSequence");
    return std::move(AddPlace(sequence, description)).Finish();
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
                                       KSL::InterfaceRef<MasterClip> clip, Membership applied,
                                       std::optional<std::size_t> index)
    : bin_(std::move(bin))
    , clip_(std::move(clip))
    , applied_(applied)
    , index_(index.value_or(bin_->GetClips().size())) {}

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

AddSequenceEdit::AddSequenceEdit(KSL::InterfaceRef<Bin> bin, KSL::InterfaceRef<Sequence> sequence,
                                 std::optional<std::size_t> index)
    : bin_(std::move(bin))
    , sequence_(std::move(sequence))
    , index_(index) {}

bool AddSequenceEdit::Apply() {
    const std::size_t count = bin_->GetSequences().size();
    if (sequence_->GetOwner() || index_.value_or(count) > count) {
        return false;
    }
    bin_->InsertSequence(index_.value_or(count), sequence_);
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

std::string AddBinEdit::DescribeRevert() const {
    EditDescription description("removeBin");
    return std::move(AddPlace(*bin_, description)).Finish();
}

std::string ClipMembershipEdit::Describe() const {
    return applied_ == Membership::kAdd ? DescribeInsert() : DescribeRemove();
}

std::string ClipMembershipEdit::DescribeRevert() const {
    return applied_ == Membership::kAdd ? DescribeRemove() : DescribeInsert();
}

std::string ClipMembershipEdit::DescribeInsert() const {
    QJsonObject settings;
    WriteClipSettings(clip_->GetSettings(), "settings", settings);
    EditDescription description("addClip");
    return std::move(AddPlace(*bin_, description)
                         .Object("settings", settings)
                         .Streams("streams", *clip_)
                         .Index("index", index_))
        .Finish();
}

std::string ClipMembershipEdit::DescribeRemove() const {
    EditDescription description("removeClip");
    return std::move(AddPlace(*clip_, description)).Finish();
}

std::string AddSequenceEdit::Describe() const {
    return DescribeSequenceInsert(*bin_, *sequence_, index_.value_or(bin_->GetSequences().size()));
}

std::string AddSequenceEdit::DescribeRevert() const {
    return DescribeSequenceRemove(*sequence_);
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
    return DescribeSequenceRemove(*sequence_);
}

std::string RemoveSequenceEdit::DescribeRevert() const {
    return DescribeSequenceInsert(*bin_, *sequence_, index_);
}

} // namespace platform::core
