#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"
#include "zelcaptioning/Caption.h"

#include <boost/intrusive_ptr.hpp>

#include <utility>

namespace MZ {

// The user asked to open a clip's caption stream for editing. On
// kStation_ClosedCaptionsActivation.
class ClosedCaptionsOpenedMessage : public KSL::MessageOf<ClosedCaptionsOpenedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::ClosedCaptionsOpenedMessage";
    ClosedCaptionsOpenedMessage(KSL::InterfaceRef<BE::IMasterClip> clip,
                                KSL::InterfaceRef<BE::ICaptioningStream> stream)
        : clip_(std::move(clip))
        , stream_(std::move(stream)) {}
    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }
    const KSL::InterfaceRef<BE::ICaptioningStream>& GetStream() const { return stream_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
};

// A caption track item: one caption stream of a clip as used in a sequence.
struct CaptioningTrackItem {
    KSL::InterfaceRef<BE::IMasterClip> masterClip;
    KSL::InterfaceRef<BE::ICaptioningStream> stream;
    KSL::InterfaceRef<BE::ISequence> sequence;
};

// The user opened a caption track item. On kStation_ClosedCaptionsActivation.
class CaptioningTrackItemOpenedMessage : public KSL::MessageOf<CaptioningTrackItemOpenedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::CaptioningTrackItemOpenedMessage";
    explicit CaptioningTrackItemOpenedMessage(CaptioningTrackItem item)
        : item_(std::move(item)) {}
    const CaptioningTrackItem& GetTrackItem() const { return item_; }

private:
    CaptioningTrackItem item_;
};

// A caption became the selected one in a panel. Posted on kStation_CaptionSelection.
class CaptionSelectedMessage : public KSL::MessageOf<CaptionSelectedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::CaptionSelectedMessage";
    CaptionSelectedMessage(KSL::InterfaceRef<BE::IMasterClip> clip,
                           boost::intrusive_ptr<zelcaptioning::Caption> caption)
        : clip_(std::move(clip))
        , caption_(std::move(caption)) {}
    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }
    const boost::intrusive_ptr<zelcaptioning::Caption>& GetCaption() const { return caption_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    boost::intrusive_ptr<zelcaptioning::Caption> caption_;
};

// The host asks every caption editor to write its pending edits to the
// project now (before it saves, undoes or redoes). On kStation_Info.
class CaptionCommitEditsMessage : public KSL::MessageOf<CaptionCommitEditsMessage> {
public:
    static constexpr const char* kTypeName = "MZ::CaptionCommitEditsMessage";
};

} // namespace MZ
