#pragma once

#include "CaptionEdits.h"
#include "CaptioningStream.h"
#include "MasterClip.h"
#include "ModelEdit.h"

#include <optional>

namespace platform::core {

// Adds a caption stream to a clip, or removes it; announced on the clip's
// station with BE::CaptioningStreamChangedMessage. A removed stream keeps its
// captions, so adding it back restores them.
class StreamMembershipEdit final : public ModelEdit {
public:
    StreamMembershipEdit(KSL::InterfaceRef<MasterClip> clip,
                         KSL::InterfaceRef<CaptioningStream> stream, Membership applied);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

    const CaptioningStream& GetStream() const { return *stream_; }

private:
    bool Attach();
    bool Detach();
    std::string DescribeAttach() const;
    std::string DescribeDetach() const;

    KSL::InterfaceRef<MasterClip> clip_;
    KSL::InterfaceRef<CaptioningStream> stream_;
    Membership applied_;
};

// Changes a stream's format; refuses when its clip has a stream of the other
// format. Announced with BE::CaptioningStreamFormatModifiedMessage, then
// BE::CaptioningStreamChangedMessage.
class StreamFormatEdit final : public ModelEdit {
public:
    StreamFormatEdit(KSL::InterfaceRef<CaptioningStream> stream,
                     zelcaptioning::StreamFormat newFormat);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override { return Describe(); }

private:
    bool SwapFormat();

    KSL::InterfaceRef<CaptioningStream> stream_;
    zelcaptioning::StreamFormat otherFormat_;
};

// Gives a clip a stream that already holds its captions, in the place of the
// clip's stream of that format if it has one: the old stream's removal and the
// new one's addition as one change, announced as both.
class PutStreamEdit final : public ModelEdit {
public:
    PutStreamEdit(KSL::InterfaceRef<MasterClip> clip, KSL::InterfaceRef<CaptioningStream> stream);
    bool Apply() override;
    bool Revert() override;
    std::string Describe() const override;
    std::string DescribeRevert() const override;

private:
    KSL::InterfaceRef<MasterClip> clip_;
    KSL::InterfaceRef<CaptioningStream> stream_;
    std::optional<StreamMembershipEdit> removeOld_;
    StreamMembershipEdit addNew_;
};

} // namespace platform::core
