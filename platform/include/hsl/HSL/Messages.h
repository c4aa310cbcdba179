#pragma once

#include "BE/IMasterClip.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"
#include "MZ/Stations.h"

#include <cstdint>

namespace HSL {

// A source monitor took a clip. On MZ::kStation_MasterClipActivation.
class SourceClipSelectedMessage : public KSL::MessageOf<SourceClipSelectedMessage> {
public:
    static constexpr const char* kTypeName = "HSL::SourceClipSelectedMessage";
    static constexpr const char* kStation = MZ::kStation_MasterClipActivation;

    enum Kind : std::uint32_t {
        kKind_MasterClip = 1, // the clip itself was opened
        kKind_SubClip = 2,    // a part of the clip, named by the second payload
    };

    SourceClipSelectedMessage(Kind kind, KSL::InterfaceRef<BE::IMasterClip> clip,
                              KSL::InterfaceRef<BE::IMasterClip> sourceClip = {})
        : kind_(kind)
        , clip_(std::move(clip))
        , sourceClip_(std::move(sourceClip)) {}

    Kind GetKind() const { return kind_; }
    const KSL::InterfaceRef<BE::IMasterClip>& GetClip() const { return clip_; }
    // For kKind_SubClip: the master clip the part was taken from.
    const KSL::InterfaceRef<BE::IMasterClip>& GetSourceClip() const { return sourceClip_; }

private:
    Kind kind_;
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::IMasterClip> sourceClip_;
};

// The user switched between audio units and video frames for audio times.
// On MZ::kStation_Info.
class ShowAudioUnitsMessage : public KSL::MessageOf<ShowAudioUnitsMessage> {
public:
    static constexpr const char* kTypeName = "HSL::ShowAudioUnitsMessage";
    static constexpr const char* kStation = MZ::kStation_Info;

    explicit ShowAudioUnitsMessage(bool showAudioUnits)
        : showAudioUnits_(showAudioUnits) {}
    bool GetShowAudioUnits() const { return showAudioUnits_; }

private:
    bool showAudioUnits_;
};

} // namespace HSL
