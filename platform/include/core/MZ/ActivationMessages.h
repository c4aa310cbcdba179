#pragma once

#include "BE/IBin.h"
#include "BE/IMasterClip.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"

#include <utility>

namespace MZ {

// The user selected a bin in the project panel. On kStation_BinActivation.
class BinSelectedMessage : public KSL::MessageOf<BinSelectedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::BinSelectedMessage";
    explicit BinSelectedMessage(KSL::InterfaceRef<BE::IBin> bin)
        : bin_(std::move(bin)) {}
    const KSL::InterfaceRef<BE::IBin>& GetBin() const { return bin_; }

private:
    KSL::InterfaceRef<BE::IBin> bin_;
};

// The user selected a master clip (empty: the selection was cleared). On
// kStation_MasterClipActivation.
class MasterClipSelectedMessage : public KSL::MessageOf<MasterClipSelectedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::MasterClipSelectedMessage";
    explicit MasterClipSelectedMessage(KSL::InterfaceRef<BE::IMasterClip> clip)
        : clip_(std::move(clip)) {}
    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
};

// A master clip was closed everywhere (the host closed it, or the project
// removed it). On kStation_MasterClipActivation.
class MasterClipClosedMessage : public KSL::MessageOf<MasterClipClosedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::MasterClipClosedMessage";
    explicit MasterClipClosedMessage(KSL::InterfaceRef<BE::IMasterClip> clip)
        : clip_(std::move(clip)) {}
    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
};

// The user selected a sequence. On kStation_SequenceActivation.
class SequenceSelectedMessage : public KSL::MessageOf<SequenceSelectedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::SequenceSelectedMessage";
    explicit SequenceSelectedMessage(KSL::InterfaceRef<BE::ISequence> sequence)
        : sequence_(std::move(sequence)) {}
    const KSL::InterfaceRef<BE::ISequence>& GetSequence() const { return sequence_; }

private:
    KSL::InterfaceRef<BE::ISequence> sequence_;
};

// A sequence's settings changed. The project sends it on the sequence's own
// station and on kStation_SequenceActivation.
class SequenceSettingsChangedMessage : public KSL::MessageOf<SequenceSettingsChangedMessage> {
public:
    static constexpr const char* kTypeName = "MZ::SequenceSettingsChangedMessage";
    explicit SequenceSettingsChangedMessage(KSL::InterfaceRef<BE::ISequence> sequence)
        : sequence_(std::move(sequence)) {}
    const KSL::InterfaceRef<BE::ISequence>& GetSequence() const { return sequence_; }

private:
    KSL::InterfaceRef<BE::ISequence> sequence_;
};

// A track item of a sequence became current; carries the item's master clip
// and the sequence. On kStation_TrackItemActivation.
template <typename T> class TrackItemInfoMessageOf : public KSL::MessageOf<T> {
public:
    TrackItemInfoMessageOf(KSL::InterfaceRef<BE::IMasterClip> clip,
                           KSL::InterfaceRef<BE::ISequence> sequence)
        : clip_(std::move(clip))
        , sequence_(std::move(sequence)) {}
    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }
    const KSL::InterfaceRef<BE::ISequence>& GetSequence() const { return sequence_; }

private:
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    KSL::InterfaceRef<BE::ISequence> sequence_;
};

// A video-only track item.
class VideoTrackItemInfoMessage : public TrackItemInfoMessageOf<VideoTrackItemInfoMessage> {
public:
    static constexpr const char* kTypeName = "MZ::VideoTrackItemInfoMessage";
    using TrackItemInfoMessageOf::TrackItemInfoMessageOf;
};

// A track item with linked video and audio.
class AudioVideoTrackItemInfoMessage
    : public TrackItemInfoMessageOf<AudioVideoTrackItemInfoMessage> {
public:
    static constexpr const char* kTypeName = "MZ::AudioVideoTrackItemInfoMessage";
    using TrackItemInfoMessageOf::TrackItemInfoMessageOf;
};

} // namespace MZ
