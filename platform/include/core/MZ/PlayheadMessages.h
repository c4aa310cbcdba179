#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"
#include "zelcaptioning/Caption.h"
#include "zelmediatypes/TickTime.h"

#include <utility>

namespace MZ {

// The source monitor's station: where its playhead is announced.
inline constexpr const char* kStation_SourcePlayhead = "MZ.Station.SourcePlayhead";

// The source monitor's playhead moved, by playback or by the user: the clip, the caption
// stream it draws, the time, and the caption of that stream at the time (null between
// captions), so that a panel can follow the caption being heard. Broadcast on
// kStation_SourcePlayhead.
class SourcePlayheadMovedMessage : public KSL::MessageOf<SourcePlayheadMovedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::SourcePlayheadMovedMessage";
    static constexpr const char* kStation = kStation_SourcePlayhead;

    SourcePlayheadMovedMessage(KSL::InterfaceRef<BE::IMasterClip> clip,
                               KSL::InterfaceRef<BE::ICaptioningStream> stream,
                               zelmediatypes::TickTime time, zelcaptioning::CaptionPtr caption,
                               bool isPlaying)
        : clip_(std::move(clip))
        , stream_(std::move(stream))
        , time_(time)
        , caption_(std::move(caption))
        , isPlaying_(isPlaying) {}

    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }
    const KSL::InterfaceRef<BE::ICaptioningStream>& GetStream() const { return stream_; }
    zelmediatypes::TickTime GetTime() const { return time_; }
    const zelcaptioning::CaptionPtr& GetCaption() const { return caption_; }
    bool IsPlaying() const { return isPlaying_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
    zelmediatypes::TickTime time_;
    zelcaptioning::CaptionPtr caption_;
    bool isPlaying_;
};

} // namespace MZ
