#include "NameEdit.h"

#include "BE/ProjectMessages.h"
#include "Bin.h"
#include "KSL/Exception.h"
#include "KSL/StationUtils.h"
#include "MZ/Stations.h"
#include "MasterClip.h"
#include "Project.h"
#include "Sequence.h"
#include "journal/EditTargets.h"

#include <utility>

namespace platform::core {

NameEdit::NameEdit(KSL::InterfaceRef<BE::IProjectItem> item, zelcore::UTF16String name)
    : item_(std::move(item))
    , otherName_(std::move(name)) {}

bool NameEdit::Swap() {
    zelcore::UTF16String current = item_->GetName();
    const KSL::InterfaceRef<BE::IProjectItem>& item = item_;
    if (Bin* bin = ImplementationOf<Bin>(item)) {
        bin->SetName(std::exchange(otherName_, std::move(current)));
    } else if (MasterClip* clip = ImplementationOf<MasterClip>(item)) {
        BE::MasterClipSettings settings = clip->GetSettings();
        settings.name = std::exchange(otherName_, std::move(current));
        clip->SetSettings(std::move(settings));
    } else if (Sequence* sequence = ImplementationOf<Sequence>(item)) {
        BE::SequenceSettings settings = sequence->GetSettings();
        settings.name = std::exchange(otherName_, std::move(current));
        sequence->SetSettings(std::move(settings));
    } else {
        return false;
    }
    KSL::StationUtils::BroadcastMessage(
        MZ::kStation_Info,
        BE::PropertiesChangedMessage(std::vector<KSL::InterfaceRef<BE::IProjectItem>>{item_}));
    return true;
}

std::string NameEdit::Describe() const {
    // Before Apply the edit holds the new name.
    EditDescription description("rename");
    const BE::IProjectItem* item = item_.Get();
    if (const auto* clip = dynamic_cast<const MasterClip*>(item)) {
        AddPlace(*clip, description);
    } else if (const auto* sequence = dynamic_cast<const Sequence*>(item)) {
        AddPlace(*sequence, description);
    } else if (const auto* bin = dynamic_cast<const Bin*>(item)) {
        AddPlace(*bin, description);
    } else {
        throw KSL::Exception("only bins, master clips and sequences are renamed");
    }
    return std::move(description.Text("name", zelcore::View(otherName_))).Finish();
}

} // namespace platform::core
