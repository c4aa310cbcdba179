#include "NameEdit.h"

#include "BE/ProjectMessages.h"
#include "Bin.h"
#include "KSL/StationUtils.h"
#include "MZ/Stations.h"
#include "Project.h"

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

} // namespace platform::core
