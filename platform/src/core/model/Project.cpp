#include "Project.h"

#include "BE/ProjectMessages.h"
#include "CaptionEdits.h"
#include "KSL/Exception.h"
#include "KSL/StationUtils.h"
#include "ModelEdit.h"
#include "NameEdit.h"
#include "ObjectSerial.h"
#include "SettingsEdits.h"
#include "StreamEdits.h"
#include "StructureEdits.h"

namespace platform::core {
namespace {

constexpr std::u16string_view kAddBinName = u"$$$/Corvala/Platform/Project/AddBin=Add Bin";
constexpr std::u16string_view kAddClipName =
    u"$$$/Corvala/Platform/Project/AddMasterClip=Add Master Clip";
constexpr std::u16string_view kRemoveClipName =
    u"$$$/Corvala/Platform/Project/RemoveMasterClip=Remove Master Clip";
constexpr std::u16string_view kClipSettingsName =
    u"$$$/Corvala/Platform/Project/ChangeMasterClip=Change Master Clip";
constexpr std::u16string_view kAddSequenceName =
    u"$$$/Corvala/Platform/Project/AddSequence=Add Sequence";
constexpr std::u16string_view kSequenceSettingsName =
    u"$$$/Corvala/Platform/Project/SequenceSettings=Change Sequence Settings";
constexpr std::u16string_view kRemoveSequenceName =
    u"$$$/Corvala/Platform/Project/RemoveSequence=Remove Sequence";
constexpr std::u16string_view kRenameBinName = u"$$$/Corvala/Platform/Project/RenameBin=Rename Bin";
constexpr std::u16string_view kRenameClipName =
    u"$$$/Corvala/Platform/Project/RenameMasterClip=Rename Master Clip";
constexpr std::u16string_view kRenameSequenceName =
    u"$$$/Corvala/Platform/Project/RenameSequence=Rename Sequence";
constexpr std::u16string_view kAddStreamName =
    u"$$$/Corvala/Platform/Project/AddCaptionStream=Add Caption Stream";
constexpr std::u16string_view kRemoveStreamName =
    u"$$$/Corvala/Platform/Project/RemoveCaptionStream=Remove Caption Stream";
constexpr std::u16string_view kStreamFormatName =
    u"$$$/Corvala/Platform/Project/ChangeCaptionStreamFormat=Change Caption Stream Format";

} // namespace

Project::Project()
    : station_(MakeUniqueStationID("BE.Project"))
    , undo_([station = station_] {
        KSL::StationUtils::BroadcastMessage(station, BE::UndoHistoryChangedMessage());
    }) {}

Project::~Project() {
    for (const auto& bin : bins_) {
        bin->SetOwner(nullptr);
    }
}

void* Project::QueryInterface(std::string_view id) const noexcept {
    auto* self = const_cast<Project*>(this);
    if (id == BE::IProject::kInterfaceID) {
        return static_cast<BE::IProject*>(self);
    }
    if (id == KSL::IStation::kInterfaceID) {
        return static_cast<KSL::IStation*>(self);
    }
    if (id == kImplementationID) {
        return self;
    }
    return nullptr;
}

KSL::StationID Project::GetStationID() const {
    return station_;
}

std::size_t Project::GetBinCount() const {
    return bins_.size();
}

KSL::InterfaceRef<BE::IBin> Project::GetBin(std::size_t index) const {
    return index < bins_.size() ? KSL::InterfaceRef<BE::IBin>(bins_[index]) : nullptr;
}

BE::IUndoHistory& Project::GetUndoHistory() {
    return undo_;
}

void Project::Execute(std::unique_ptr<ModelEdit> edit, BE::UndoMode mode,
                      std::u16string_view actionName) {
    undo_.Execute(std::move(edit), mode, actionName);
}

void Project::InsertBin(std::size_t index, KSL::InterfaceRef<Bin> bin) {
    bin->SetOwner(this);
    bins_.insert(bins_.begin() + static_cast<std::ptrdiff_t>(index), std::move(bin));
}

void Project::RemoveBin(std::size_t index) {
    bins_[index]->SetOwner(nullptr);
    bins_.erase(bins_.begin() + static_cast<std::ptrdiff_t>(index));
}

Bin& Project::OwnBin(const KSL::InterfaceRef<BE::IBin>& bin) const {
    Bin* impl = ImplementationOf<Bin>(bin);
    if (!impl || impl->GetProject() != this) {
        throw KSL::Exception("the bin is not part of this project");
    }
    return *impl;
}

MasterClip& Project::OwnClip(const KSL::InterfaceRef<BE::IMasterClip>& clip) const {
    MasterClip* impl = ImplementationOf<MasterClip>(clip);
    if (!impl || impl->GetProject() != this) {
        throw KSL::Exception("the master clip is not part of this project");
    }
    return *impl;
}

Sequence& Project::OwnSequence(const KSL::InterfaceRef<BE::ISequence>& sequence) const {
    Sequence* impl = ImplementationOf<Sequence>(sequence);
    if (!impl || !impl->GetOwner() || impl->GetOwner()->GetProject() != this) {
        throw KSL::Exception("the sequence is not part of this project");
    }
    return *impl;
}

CaptioningStream& Project::OwnStream(const KSL::InterfaceRef<BE::ICaptioningStream>& stream) const {
    CaptioningStream* impl = ImplementationOf<CaptioningStream>(stream);
    if (!impl || impl->GetProject() != this) {
        throw KSL::Exception("the caption stream is not part of this project");
    }
    return *impl;
}

KSL::InterfaceRef<BE::IBin> Project::AddBin(const zelcore::UTF16String& name, BE::UndoMode mode) {
    KSL::InterfaceRef<Bin> bin(new Bin(name));
    Execute(std::make_unique<AddBinEdit>(*this, bin), mode, kAddBinName);
    return bin;
}

KSL::InterfaceRef<BE::IMasterClip> Project::AddMasterClip(const KSL::InterfaceRef<BE::IBin>& bin,
                                                          const BE::MasterClipSettings& settings,
                                                          BE::UndoMode mode) {
    KSL::InterfaceRef<Bin> owner(&OwnBin(bin));
    KSL::InterfaceRef<MasterClip> clip(new MasterClip(settings));
    Execute(std::make_unique<ClipMembershipEdit>(owner, clip, Membership::kAdd), mode,
            kAddClipName);
    return clip;
}

void Project::RemoveMasterClip(const KSL::InterfaceRef<BE::IMasterClip>& clip, BE::UndoMode mode) {
    KSL::InterfaceRef<MasterClip> impl(&OwnClip(clip));
    KSL::InterfaceRef<Bin> owner(impl->GetOwner());
    Execute(std::make_unique<ClipMembershipEdit>(owner, impl, Membership::kRemove), mode,
            kRemoveClipName);
}

void Project::SetMasterClipSettings(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                                    const BE::MasterClipSettings& settings, BE::UndoMode mode) {
    KSL::InterfaceRef<MasterClip> impl(&OwnClip(clip));
    Execute(std::make_unique<ClipSettingsEdit>(impl, settings), mode, kClipSettingsName);
}

void Project::RenameItem(const KSL::InterfaceRef<BE::IProjectItem>& item,
                         const zelcore::UTF16String& name, BE::UndoMode mode) {
    if (name.empty()) {
        throw KSL::Exception("a project item needs a name");
    }
    std::u16string_view stepName;
    if (!item) {
        throw KSL::Exception("no project item to rename");
    }
    switch (item->GetItemKind()) {
    case BE::ProjectItemKind::kBin:
        OwnBin(item.QueryInterface<BE::IBin>());
        stepName = kRenameBinName;
        break;
    case BE::ProjectItemKind::kMasterClip:
        OwnClip(item.QueryInterface<BE::IMasterClip>());
        stepName = kRenameClipName;
        break;
    case BE::ProjectItemKind::kSequence:
        OwnSequence(item.QueryInterface<BE::ISequence>());
        stepName = kRenameSequenceName;
        break;
    case BE::ProjectItemKind::kCaptioningStream:
        throw KSL::Exception("a caption stream has no name to change");
    }
    if (item->GetName() != name) {
        Execute(std::make_unique<NameEdit>(item, name), mode, stepName);
    }
}

KSL::InterfaceRef<BE::ISequence> Project::AddSequence(const KSL::InterfaceRef<BE::IBin>& bin,
                                                      const BE::SequenceSettings& settings,
                                                      BE::UndoMode mode) {
    KSL::InterfaceRef<Bin> owner(&OwnBin(bin));
    KSL::InterfaceRef<Sequence> sequence(new Sequence(settings));
    Execute(std::make_unique<AddSequenceEdit>(owner, sequence), mode, kAddSequenceName);
    return sequence;
}

void Project::SetSequenceSettings(const KSL::InterfaceRef<BE::ISequence>& sequence,
                                  const BE::SequenceSettings& settings, BE::UndoMode mode) {
    KSL::InterfaceRef<Sequence> impl(&OwnSequence(sequence));
    Execute(std::make_unique<SequenceSettingsEdit>(impl, settings), mode, kSequenceSettingsName);
}

void Project::RemoveSequence(const KSL::InterfaceRef<BE::ISequence>& sequence, BE::UndoMode mode) {
    KSL::InterfaceRef<Sequence> impl(&OwnSequence(sequence));
    KSL::InterfaceRef<Bin> owner(impl->GetOwner());
    Execute(std::make_unique<RemoveSequenceEdit>(owner, impl), mode, kRemoveSequenceName);
}

KSL::InterfaceRef<BE::ICaptioningStream>
Project::AddCaptioningStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                             zelcaptioning::StreamFormat format, BE::UndoMode mode) {
    KSL::InterfaceRef<MasterClip> owner(&OwnClip(clip));
    if (owner->FindCaptioningStream(format)) {
        throw KSL::Exception("the master clip already has a caption stream of that format");
    }
    KSL::InterfaceRef<CaptioningStream> stream(new CaptioningStream(format));
    Execute(std::make_unique<StreamMembershipEdit>(owner, stream, Membership::kAdd), mode,
            kAddStreamName);
    return stream;
}

void Project::RemoveCaptioningStream(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                                     BE::UndoMode mode) {
    KSL::InterfaceRef<CaptioningStream> impl(&OwnStream(stream));
    KSL::InterfaceRef<MasterClip> owner(impl->GetOwner());
    Execute(std::make_unique<StreamMembershipEdit>(owner, impl, Membership::kRemove), mode,
            kRemoveStreamName);
}

KSL::InterfaceRef<BE::ICaptioningStream>
Project::PutCaptioningStream(const KSL::InterfaceRef<BE::IMasterClip>& clip,
                             zelcaptioning::StreamFormat format,
                             const std::vector<zelcaptioning::CaptionPtr>& captions,
                             BE::UndoMode mode, std::u16string_view actionName) {
    KSL::InterfaceRef<MasterClip> owner(&OwnClip(clip));
    KSL::InterfaceRef<CaptioningStream> stream(new CaptioningStream(format));
    for (const zelcaptioning::CaptionPtr& caption : captions) {
        if (!caption) {
            throw KSL::Exception("an empty caption cannot be put into a caption stream");
        }
        stream->Insert(caption, stream->NextArrival());
    }
    Execute(std::make_unique<PutStreamEdit>(owner, stream), mode, actionName);
    return stream;
}

void Project::ChangeCaptioningStreamFormat(const KSL::InterfaceRef<BE::ICaptioningStream>& stream,
                                           zelcaptioning::StreamFormat format, BE::UndoMode mode) {
    KSL::InterfaceRef<CaptioningStream> impl(&OwnStream(stream));
    if (impl->GetStreamFormat() == format) {
        return;
    }
    if (impl->GetOwner()->FindCaptioningStream(format)) {
        throw KSL::Exception("the master clip already has a caption stream of that format");
    }
    Execute(std::make_unique<StreamFormatEdit>(impl, format), mode, kStreamFormatName);
}

} // namespace platform::core

namespace BE {

KSL::InterfaceRef<IProject> CreateProject() {
    return KSL::InterfaceRef<IProject>(new platform::core::Project);
}

} // namespace BE
