#include "StreamEdits.h"

#include "BE/StreamMessages.h"
#include "KSL/StationUtils.h"
#include "file/JsonValues.h"
#include "journal/EditTargets.h"

namespace platform::core {
namespace {

void AnnounceStreamChange(const KSL::InterfaceRef<MasterClip>& clip,
                          const KSL::InterfaceRef<CaptioningStream>& stream,
                          BE::CaptioningStreamChangeKind kind) {
    KSL::StationUtils::BroadcastMessage(
        clip->GetStationID(),
        BE::CaptioningStreamChangedMessage(KSL::InterfaceRef<BE::IMasterClip>(clip),
                                           KSL::InterfaceRef<BE::ICaptioningStream>(stream), kind));
}

} // namespace

StreamMembershipEdit::StreamMembershipEdit(KSL::InterfaceRef<MasterClip> clip,
                                           KSL::InterfaceRef<CaptioningStream> stream,
                                           Membership applied)
    : clip_(std::move(clip))
    , stream_(std::move(stream))
    , applied_(applied) {}

bool StreamMembershipEdit::Apply() {
    return applied_ == Membership::kAdd ? Attach() : Detach();
}

bool StreamMembershipEdit::Revert() {
    return applied_ == Membership::kAdd ? Detach() : Attach();
}

bool StreamMembershipEdit::Attach() {
    if (stream_->GetOwner() || clip_->FindCaptioningStream(stream_->GetStreamFormat())) {
        return false;
    }
    clip_->AttachStream(stream_);
    AnnounceStreamChange(clip_, stream_, BE::CaptioningStreamChangeKind::kAdded);
    return true;
}

bool StreamMembershipEdit::Detach() {
    if (stream_->GetOwner() != clip_.Get()) {
        return false;
    }
    clip_->DetachStream(stream_.Get());
    AnnounceStreamChange(clip_, stream_, BE::CaptioningStreamChangeKind::kRemoved);
    return true;
}

StreamFormatEdit::StreamFormatEdit(KSL::InterfaceRef<CaptioningStream> stream,
                                   zelcaptioning::StreamFormat newFormat)
    : stream_(std::move(stream))
    , otherFormat_(newFormat) {}

bool StreamFormatEdit::Apply() {
    return SwapFormat();
}
bool StreamFormatEdit::Revert() {
    return SwapFormat();
}

bool StreamFormatEdit::SwapFormat() {
    KSL::InterfaceRef<MasterClip> clip(stream_->GetOwner());
    if (!clip || clip->FindCaptioningStream(otherFormat_)) {
        return false;
    }
    const zelcaptioning::StreamFormat oldFormat = stream_->GetStreamFormat();
    stream_->SetStreamFormat(otherFormat_);
    otherFormat_ = oldFormat;
    clip->SortStreams();
    KSL::StationUtils::BroadcastMessage(
        clip->GetStationID(), BE::CaptioningStreamFormatModifiedMessage(
                                  KSL::InterfaceRef<BE::IMasterClip>(clip),
                                  KSL::InterfaceRef<BE::ICaptioningStream>(stream_), oldFormat));
    AnnounceStreamChange(clip, stream_, BE::CaptioningStreamChangeKind::kFormatChanged);
    return true;
}

namespace {

// The name of a format; a stream's format always has one.
std::string_view FormatName(zelcaptioning::StreamFormat format) {
    const std::optional<std::string_view> name = NameOf(format);
    if (!name) {
        throw JsonValueError("format", "the format has no name in project files");
    }
    return *name;
}

// The stream with its captions in the place of the clip's stream of its
// format, if the clip has one.
std::string DescribePut(const MasterClip& clip, const CaptioningStream& stream) {
    EditDescription description("putStream");
    return std::move(AddPlace(clip, description)
                         .Name("format", FormatName(stream.GetStreamFormat()))
                         .Captions("captions", stream))
        .Finish();
}

} // namespace

std::string StreamMembershipEdit::Describe() const {
    return applied_ == Membership::kAdd ? DescribeAttach() : DescribeDetach();
}

std::string StreamMembershipEdit::DescribeRevert() const {
    return applied_ == Membership::kAdd ? DescribeDetach() : DescribeAttach();
}

// A stream is added new and empty (Project::AddCaptioningStream); one added
// back holds the captions it had when it was removed.
std::string StreamMembershipEdit::DescribeAttach() const {
    if (!stream_->GetEntries().empty()) {
        return DescribePut(*clip_, *stream_);
    }
    EditDescription description("addStream");
    return std::move(
               AddPlace(*clip_, description).Name("format", FormatName(stream_->GetStreamFormat())))
        .Finish();
}

std::string StreamMembershipEdit::DescribeDetach() const {
    EditDescription description("removeStream");
    return std::move(AddPlace(*stream_, description)).Finish();
}

std::string StreamFormatEdit::Describe() const {
    EditDescription description("streamFormat");
    return std::move(AddPlace(*stream_, description).Name("to", FormatName(otherFormat_))).Finish();
}

PutStreamEdit::PutStreamEdit(KSL::InterfaceRef<MasterClip> clip,
                             KSL::InterfaceRef<CaptioningStream> stream)
    : clip_(clip)
    , stream_(stream)
    , addNew_(clip, stream, Membership::kAdd) {
    if (const auto old = clip->FindCaptioningStream(stream->GetStreamFormat())) {
        removeOld_.emplace(
            clip, KSL::InterfaceRef<CaptioningStream>(static_cast<CaptioningStream*>(old.Get())),
            Membership::kRemove);
    }
}

bool PutStreamEdit::Apply() {
    if (removeOld_ && !removeOld_->Apply()) {
        return false;
    }
    if (!addNew_.Apply()) {
        if (removeOld_) {
            removeOld_->Revert();
        }
        return false;
    }
    return true;
}

bool PutStreamEdit::Revert() {
    if (!addNew_.Revert()) {
        return false;
    }
    if (removeOld_ && !removeOld_->Revert()) {
        addNew_.Apply();
        return false;
    }
    return true;
}

std::string PutStreamEdit::Describe() const {
    return DescribePut(*clip_, *stream_);
}

std::string PutStreamEdit::DescribeRevert() const {
    return removeOld_ ? DescribePut(*clip_, removeOld_->GetStream()) : addNew_.DescribeRevert();
}

} // namespace platform::core
