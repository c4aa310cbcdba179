#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"
#include "zelcaptioning/StreamFormat.h"

#include <utility>

namespace BE {

enum class CaptioningStreamChangeKind { kAdded, kRemoved, kFormatChanged };

// A clip's set of caption streams changed. On the clip's station.
class CaptioningStreamChangedMessage : public KSL::MessageOf<CaptioningStreamChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::CaptioningStreamChangedMessage";
    CaptioningStreamChangedMessage(KSL::InterfaceRef<IMasterClip> clip,
                                   KSL::InterfaceRef<ICaptioningStream> stream,
                                   CaptioningStreamChangeKind kind)
        : clip_(std::move(clip))
        , stream_(std::move(stream))
        , kind_(kind) {}

    const KSL::InterfaceRef<IMasterClip>& GetMasterClip() const { return clip_; }
    const KSL::InterfaceRef<ICaptioningStream>& GetStream() const { return stream_; }
    CaptioningStreamChangeKind GetKind() const { return kind_; }

private:
    KSL::InterfaceRef<IMasterClip> clip_;
    KSL::InterfaceRef<ICaptioningStream> stream_;
    CaptioningStreamChangeKind kind_;
};

// A stream's format changed; captions may need measuring again. On the clip's
// station, just before the CaptioningStreamChangedMessage of kind kFormatChanged.
class CaptioningStreamFormatModifiedMessage
    : public KSL::MessageOf<CaptioningStreamFormatModifiedMessage> {
public:
    static constexpr const char* kTypeName = "BE::CaptioningStreamFormatModifiedMessage";
    CaptioningStreamFormatModifiedMessage(KSL::InterfaceRef<IMasterClip> clip,
                                          KSL::InterfaceRef<ICaptioningStream> stream,
                                          zelcaptioning::StreamFormat oldFormat)
        : clip_(std::move(clip))
        , stream_(std::move(stream))
        , oldFormat_(oldFormat) {}

    const KSL::InterfaceRef<IMasterClip>& GetMasterClip() const { return clip_; }
    const KSL::InterfaceRef<ICaptioningStream>& GetStream() const { return stream_; }
    zelcaptioning::StreamFormat GetOldFormat() const { return oldFormat_; }

private:
    KSL::InterfaceRef<IMasterClip> clip_;
    KSL::InterfaceRef<ICaptioningStream> stream_;
    zelcaptioning::StreamFormat oldFormat_;
};

} // namespace BE
