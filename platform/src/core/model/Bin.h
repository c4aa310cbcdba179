#pragma once

#include "BE/IBin.h"
#include "KSL/IStation.h"
#include "MasterClip.h"
#include "RefCountedObject.h"
#include "Sequence.h"

#include <vector>

namespace platform::core {

class Project;

class Bin final : public RefCountedObject<BE::IBin, KSL::IStation> {
public:
    static constexpr const char* kImplementationID = "platform::core::Bin";

    explicit Bin(zelcore::UTF16String name);
    ~Bin() override;

    void* QueryInterface(std::string_view interfaceID) const noexcept override;
    BE::ProjectItemKind GetItemKind() const override;
    zelcore::UTF16String GetName() const override;
    KSL::StationID GetStationID() const override;

    std::size_t GetMasterClipCount() const override;
    KSL::InterfaceRef<BE::IMasterClip> GetMasterClip(std::size_t index) const override;
    std::size_t GetSequenceCount() const override;
    KSL::InterfaceRef<BE::ISequence> GetSequence(std::size_t index) const override;

    void SetName(zelcore::UTF16String name) { name_ = std::move(name); }
    Project* GetProject() const { return owner_; }
    void SetOwner(Project* owner) { owner_ = owner; }

    const std::vector<KSL::InterfaceRef<MasterClip>>& GetClips() const { return clips_; }
    const std::vector<KSL::InterfaceRef<Sequence>>& GetSequences() const { return sequences_; }
    // Inserting makes this bin the owner; removing clears the owner.
    void InsertClip(std::size_t index, KSL::InterfaceRef<MasterClip> clip);
    void RemoveClip(std::size_t index);
    void InsertSequence(std::size_t index, KSL::InterfaceRef<Sequence> sequence);
    void RemoveSequence(std::size_t index);

private:
    zelcore::UTF16String name_;
    Project* owner_ = nullptr;
    KSL::StationID station_;
    std::vector<KSL::InterfaceRef<MasterClip>> clips_;
    std::vector<KSL::InterfaceRef<Sequence>> sequences_;
};

} // namespace platform::core
