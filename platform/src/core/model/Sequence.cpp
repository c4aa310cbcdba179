#include "Sequence.h"

#include "ObjectSerial.h"

namespace platform::core {

Sequence::Sequence(BE::SequenceSettings settings)
    : settings_(std::move(settings))
    , station_(MakeUniqueStationID("BE.Sequence")) {}

void* Sequence::QueryInterface(std::string_view id) const noexcept {
    auto* self = const_cast<Sequence*>(this);
    if (id == BE::ISequence::kInterfaceID || id == BE::IProjectItem::kInterfaceID) {
        return static_cast<BE::ISequence*>(self);
    }
    if (id == KSL::IStation::kInterfaceID) {
        return static_cast<KSL::IStation*>(self);
    }
    if (id == kImplementationID) {
        return self;
    }
    return nullptr;
}

BE::ProjectItemKind Sequence::GetItemKind() const {
    return BE::ProjectItemKind::kSequence;
}
zelcore::UTF16String Sequence::GetName() const {
    return settings_.name;
}
KSL::StationID Sequence::GetStationID() const {
    return station_;
}
BE::SequenceSettings Sequence::GetSettings() const {
    return settings_;
}

} // namespace platform::core
