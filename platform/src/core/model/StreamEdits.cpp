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

} // namespace

std::string StreamMembershipEdit::Describe() const {
    if (applied_ == Membership::kAdd) {
        // A new stream, empty or filled (Project::PutCaptioningStream).
        EditDescription description("addStream");
        AddPlace(*clip_, description).Name("format", FormatName(stream_->GetStreamFormat()));
        if (stream_->GetCaptionCount() > 0) {
            description.Captions("captions", *stream_);
        }
        return std::move(description).Finish();
    }
    EditDescription description("removeStream");
    return std::move(AddPlace(*stream_, description)).Finish();
}

std::string StreamFormatEdit::Describe() const {
    EditDescription description("streamFormat");
    return std::move(AddPlace(*stream_, description).Name("to", FormatName(otherFormat_))).Finish();
}

} // namespace platform::core
