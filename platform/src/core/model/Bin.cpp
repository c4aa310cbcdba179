#include "Bin.h"

#include "ObjectSerial.h"

namespace platform::core {

Bin::Bin(zelcore::UTF16String name)
    : name_(std::move(name))
    , station_(MakeUniqueStationID("BE.Bin")) {}

Bin::~Bin() {
    for (const auto& clip : clips_) {
        clip->SetOwner(nullptr);
    }
    for (const auto& sequence : sequences_) {
        sequence->SetOwner(nullptr);
    }
}

void* Bin::QueryInterface(std::string_view id) const noexcept {
    auto* self = const_cast<Bin*>(this);
    if (id == BE::IBin::kInterfaceID || id == BE::IProjectItem::kInterfaceID) {
        return static_cast<BE::IBin*>(self);
    }
    if (id == KSL::IStation::kInterfaceID) {
        return static_cast<KSL::IStation*>(self);
    }
    if (id == kImplementationID) {
        return self;
    }
    return nullptr;
}

BE::ProjectItemKind Bin::GetItemKind() const {
    return BE::ProjectItemKind::kBin;
}
zelcore::UTF16String Bin::GetName() const {
    return name_;
}
KSL::StationID Bin::GetStationID() const {
    return station_;
}

std::size_t Bin::GetMasterClipCount() const {
    return clips_.size();
}

KSL::InterfaceRef<BE::IMasterClip> Bin::GetMasterClip(std::size_t index) const {
    return index < clips_.size() ? KSL::InterfaceRef<BE::IMasterClip>(clips_[index]) : nullptr;
}

std::size_t Bin::GetSequenceCount() const {
    return sequences_.size();
}

KSL::InterfaceRef<BE::ISequence> Bin::GetSequence(std::size_t index) const {
    return index < sequences_.size() ? KSL::InterfaceRef<BE::ISequence>(sequences_[index])
                                     : nullptr;
}

void Bin::InsertClip(std::size_t index, KSL::InterfaceRef<MasterClip> clip) {
    clip->SetOwner(this);
    clips_.insert(clips_.begin() + static_cast<std::ptrdiff_t>(index), std::move(clip));
}

void Bin::RemoveClip(std::size_t index) {
    clips_[index]->SetOwner(nullptr);
    clips_.erase(clips_.begin() + static_cast<std::ptrdiff_t>(index));
}

void Bin::InsertSequence(std::size_t index, KSL::InterfaceRef<Sequence> sequence) {
    sequence->SetOwner(this);
    sequences_.insert(sequences_.begin() + static_cast<std::ptrdiff_t>(index), std::move(sequence));
}

void Bin::RemoveSequence(std::size_t index) {
    sequences_[index]->SetOwner(nullptr);
    sequences_.erase(sequences_.begin() + static_cast<std::ptrdiff_t>(index));
}

} // namespace platform::core
