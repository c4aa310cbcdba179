#pragma once

#include "BE/ISequence.h"
#include "KSL/IStation.h"
#include "RefCountedObject.h"

namespace platform::core {

class Bin;

class Sequence final : public RefCountedObject<BE::ISequence, KSL::IStation> {
public:
    static constexpr const char* kImplementationID = "platform::core::Sequence";

    explicit Sequence(BE::SequenceSettings settings);

    void* QueryInterface(std::string_view interfaceID) const noexcept override;
    BE::ProjectItemKind GetItemKind() const override;
    zelcore::UTF16String GetName() const override;
    KSL::StationID GetStationID() const override;
    BE::SequenceSettings GetSettings() const override;

    void SetSettings(BE::SequenceSettings settings) { settings_ = std::move(settings); }
    Bin* GetOwner() const { return owner_; }
    void SetOwner(Bin* owner) { owner_ = owner; }

private:
    BE::SequenceSettings settings_;
    Bin* owner_ = nullptr;
    KSL::StationID station_;
};

} // namespace platform::core
