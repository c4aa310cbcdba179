#pragma once

#include "BE/IProject.h"
#include "Bin.h"
#include "KSL/IStation.h"
#include "RefCountedObject.h"
#include "UndoStack.h"

#include <memory>
#include <vector>

namespace platform::core {

class EditRecorder;
class ModelEdit;

class Project final : public RefCountedObject<BE::IProject, KSL::IStation> {
public:
    static constexpr const char* kImplementationID = "platform::core::Project";

    Project();
    ~Project() override;

    void* QueryInterface(std::string_view interfaceID) const noexcept override;
    KSL::StationID GetStationID() const override;

    std::size_t GetBinCount() const override;
    KSL::InterfaceRef<BE::IBin> GetBin(std::size_t index) const override;
    BE::IUndoHistory& GetUndoHistory() override;

    KSL::InterfaceRef<BE::IBin> AddBin(const zelcore::UTF16String& name,
                                       BE::UndoMode mode) override;
    KSL::InterfaceRef<BE::IMasterClip> AddMasterClip(const KSL::InterfaceRef<BE::IBin>& bin,
                                                     const BE::MasterClipSettings& settings,
                                                     BE::UndoMode mode) override;
    void RemoveMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                          BE::UndoMode mode) override;
    void SetMasterClipSettings(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                               const BE::MasterClipSettings& settings, BE::UndoMode mode) override;
    void RenameItem(const KSL::InterfaceRef<BE::IProjectItem>& item,
                    const zelcore::UTF16String& name, BE::UndoMode mode) override;
    KSL::InterfaceRef<BE::ISequence> AddSequence(const KSL::InterfaceRef<BE::IBin>& bin,
                                                 const BE::SequenceSettings& settings,
                                                 BE::UndoMode mode) override;
    void SetSequenceSettings(const KSL::InterfaceRef<BE::ISequence>& sequence,
                             const BE::SequenceSettings& settings, BE::UndoMode mode) override;
    void RemoveSequence(const KSL::InterfaceRef<BE::ISequence>& sequence,
                        BE::UndoMode mode) override;
    KSL::InterfaceRef<BE::ICaptioningStream>
    AddCaptioningStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                        zelcaptioning::StreamFormat format, BE::UndoMode mode) override;
    void RemoveCaptioningStream(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                                BE::UndoMode mode) override;
    void ChangeCaptioningStreamFormat(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                                      zelcaptioning::StreamFormat format,
                                      BE::UndoMode mode) override;
    KSL::InterfaceRef<BE::ICaptioningStream>
    PutCaptioningStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                        zelcaptioning::StreamFormat format,
                        const std::vector<zelcaptioning::CaptionPtr>& captions, BE::UndoMode mode,
                        std::u16string_view actionName) override;

    // Runs a model edit through the undo history; the name is a localisation key.
    void Execute(std::unique_ptr<ModelEdit> edit, BE::UndoMode mode,
                 std::u16string_view actionName);

    // See UndoStack::DropRedoSteps.
    void DropRedoSteps() { undo_.DropRedoSteps(); }
    // See UndoStack::SetRecorder.
    void SetRecorder(EditRecorder* recorder) { undo_.SetRecorder(recorder); }

    const std::vector<KSL::InterfaceRef<Bin>>& GetBins() const { return bins_; }
    // Appending and removing set and clear the bin's owner.
    void InsertBin(std::size_t index, KSL::InterfaceRef<Bin> bin);
    void RemoveBin(std::size_t index);

private:
    // The implementation behind a reference, checked to belong to this project.
    Bin& OwnBin(const KSL::InterfaceRef<BE::IBin>& bin) const;
    MasterClip& OwnClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) const;
    Sequence& OwnSequence(const KSL::InterfaceRef<BE::ISequence>& sequence) const;
    CaptioningStream& OwnStream(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) const;

    KSL::StationID station_;
    UndoStack undo_;
    std::vector<KSL::InterfaceRef<Bin>> bins_;
};

// The implementation object behind an interface reference of this module, or
// null when it is empty or implemented elsewhere.
template <typename Impl, typename T> Impl* ImplementationOf(const KSL::InterfaceRef<T>& ref) {
    return ref ? static_cast<Impl*>(ref->QueryInterface(Impl::kImplementationID)) : nullptr;
}

} // namespace platform::core
