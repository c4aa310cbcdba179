#pragma once

#include "BE/IMasterClip.h"
#include "CaptioningStream.h"
#include "KSL/IStation.h"
#include "RefCountedObject.h"

#include <vector>

namespace platform::core {

class Bin;
class Project;

class MasterClip final : public RefCountedObject<BE::IMasterClip, KSL::IStation> {
public:
    static constexpr const char* kImplementationID = "platform::core::MasterClip";

    explicit MasterClip(BE::MasterClipSettings settings);
    ~MasterClip() override;

    void* QueryInterface(std::string_view interfaceID) const noexcept override;
    BE::ProjectItemKind GetItemKind() const override;
    zelcore::UTF16String GetName() const override;
    KSL::StationID GetStationID() const override;

    BE::MasterClipSettings GetSettings() const override;
    KSL::InterfaceRef<BE::IBin> GetBin() const override;
    std::size_t GetCaptioningStreamCount() const override;
    KSL::InterfaceRef<BE::ICaptioningStream> GetCaptioningStream(std::size_t index) const override;
    KSL::InterfaceRef<BE::ICaptioningStream>
    FindCaptioningStream(zelcaptioning::StreamFormat format) const override;

    void SetSettings(BE::MasterClipSettings settings) { settings_ = std::move(settings); }
    Bin* GetOwner() const { return owner_; }
    void SetOwner(Bin* owner) { owner_ = owner; }
    Project* GetProject() const;

    const std::vector<KSL::InterfaceRef<CaptioningStream>>& GetStreams() const { return streams_; }
    // Adds the stream in format order and makes this clip its owner.
    void AttachStream(KSL::InterfaceRef<CaptioningStream> stream);
    // Removes the stream and clears its owner.
    void DetachStream(CaptioningStream* stream);
    // Restores format order after a stream's format changed.
    void SortStreams();

private:
    BE::MasterClipSettings settings_;
    Bin* owner_ = nullptr;
    KSL::StationID station_;
    std::vector<KSL::InterfaceRef<CaptioningStream>> streams_;
};

} // namespace platform::core
