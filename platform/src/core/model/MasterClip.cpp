#include "MasterClip.h"

#include "Bin.h"
#include "ObjectSerial.h"

#include <algorithm>

namespace platform::core {

MasterClip::MasterClip(BE::MasterClipSettings settings)
    : settings_(std::move(settings))
    , station_(MakeUniqueStationID("BE.MasterClip")) {}

MasterClip::~MasterClip() {
    for (const auto& stream : streams_) {
        stream->SetOwner(nullptr);
    }
}

void* MasterClip::QueryInterface(std::string_view id) const noexcept {
    auto* self = const_cast<MasterClip*>(this);
    if (id == BE::IMasterClip::kInterfaceID || id == BE::IProjectItem::kInterfaceID) {
        return static_cast<BE::IMasterClip*>(self);
    }
    if (id == KSL::IStation::kInterfaceID) {
        return static_cast<KSL::IStation*>(self);
    }
    if (id == kImplementationID) {
        return self;
    }
    return nullptr;
}

BE::ProjectItemKind MasterClip::GetItemKind() const {
    return BE::ProjectItemKind::kMasterClip;
}
zelcore::UTF16String MasterClip::GetName() const {
    return settings_.name;
}
KSL::StationID MasterClip::GetStationID() const {
    return station_;
}
BE::MasterClipSettings MasterClip::GetSettings() const {
    return settings_;
}

KSL::InterfaceRef<BE::IBin> MasterClip::GetBin() const {
    return KSL::InterfaceRef<BE::IBin>(owner_);
}

std::size_t MasterClip::GetCaptioningStreamCount() const {
    return streams_.size();
}

KSL::InterfaceRef<BE::ICaptioningStream> MasterClip::GetCaptioningStream(std::size_t index) const {
    return index < streams_.size() ? KSL::InterfaceRef<BE::ICaptioningStream>(streams_[index])
                                   : nullptr;
}

KSL::InterfaceRef<BE::ICaptioningStream>
MasterClip::FindCaptioningStream(zelcaptioning::StreamFormat format) const {
    for (const auto& stream : streams_) {
        if (stream->GetStreamFormat() == format) {
            return stream;
        }
    }
    return nullptr;
}

Project* MasterClip::GetProject() const {
    return owner_ ? owner_->GetProject() : nullptr;
}

void MasterClip::AttachStream(KSL::InterfaceRef<CaptioningStream> stream) {
    stream->SetOwner(this);
    streams_.push_back(std::move(stream));
    SortStreams();
}

void MasterClip::DetachStream(CaptioningStream* stream) {
    stream->SetOwner(nullptr);
    std::erase_if(streams_, [stream](const auto& s) { return s.Get() == stream; });
}

void MasterClip::SortStreams() {
    std::stable_sort(streams_.begin(), streams_.end(), [](const auto& a, const auto& b) {
        return a->GetStreamFormat() < b->GetStreamFormat();
    });
}

} // namespace platform::core
