#pragma once

#include "BE/ICaptioningStream.h"
#include "BE/IMasterClip.h"
#include "BE/ISequence.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelmediatypes/TimeDisplay.h"

#include <cstdint>
#include <set>

namespace HandlerCaptions {

// Where the caption pane's captions come from: the current master clip, the
// caption stream formats it offers, the one chosen to show, and the time
// display formats the rows format their times in.
class CaptionSource {
public:
    // kSourceKind_MasterClip offers every stream of the clip; any other kind
    // offers only the stream it was opened with (a caption track item).
    enum SourceKind : std::uint32_t {
        kSourceKind_MasterClip = 1,
        kSourceKind_TrackItem = 2,
    };

    SourceKind GetSourceKind() const { return sourceKind_; }
    // The stream a track item source shows; ignored for a master clip source.
    void SetSource(SourceKind kind, KSL::InterfaceRef<BE::ICaptioningStream> trackStream);

    const KSL::InterfaceRef<BE::IMasterClip>& GetMasterClip() const { return clip_; }
    void SetMasterClip(KSL::InterfaceRef<BE::IMasterClip> clip) { clip_ = std::move(clip); }
    const KSL::InterfaceRef<BE::ISequence>& GetSequence() const { return sequence_; }
    void SetSequence(KSL::InterfaceRef<BE::ISequence> sequence) { sequence_ = std::move(sequence); }

    // The stream to show: the chosen format's, else the clip's smallest
    // format's; empty without a clip or stream.
    KSL::InterfaceRef<BE::ICaptioningStream> ResolveStream() const;

    // Forgets the time formats and the chosen format and re-reads the offer.
    void ResetFormats();
    // Re-reads the offer after the clip's streams changed; a format that is
    // still offered stays chosen, otherwise a newly added one wins. Returns
    // whether the chosen format changed.
    bool RefreshFormats();
    // Chooses an offered format (a person picked that stream); false when the
    // source does not offer it.
    bool ChooseFormat(zelcaptioning::StreamFormat format);
    // True when nothing is chosen yet but the source now has a stream.
    bool NeedsFormatRefresh() const;

    const std::set<zelcaptioning::StreamFormat>& GetAvailableFormats() const { return available_; }
    zelcaptioning::StreamFormat GetChosenFormat() const { return chosen_; }

    // Time display formats; kTimeDisplay_Unknown until known, and never shown
    // then. Each setter returns whether the stored value changed.
    zelmediatypes::TimeDisplay GetSourceVideoFormat() const { return sourceVideo_; }
    zelmediatypes::TimeDisplay GetSourceAudioFormat() const { return sourceAudio_; }
    zelmediatypes::TimeDisplay GetSequenceVideoFormat() const { return sequenceVideo_; }
    zelmediatypes::TimeDisplay GetSequenceAudioFormat() const { return sequenceAudio_; }
    bool SetSourceVideoFormat(zelmediatypes::TimeDisplay display);
    bool SetSourceAudioFormat(zelmediatypes::TimeDisplay display);
    bool SetSequenceVideoFormat(zelmediatypes::TimeDisplay display);
    bool SetSequenceAudioFormat(zelmediatypes::TimeDisplay display);

    // The source's flag is the negation of "show audio units"; the sequence's
    // the negation of its frame alignment. Both start at 1.
    bool GetSourceFlag() const { return sourceFlag_; }
    bool GetSequenceFlag() const { return sequenceFlag_; }
    bool SetSourceFlag(bool flag);
    bool SetSequenceFlag(bool flag);

    // The video format the rows show: the sequence's for a track item source,
    // the clip's otherwise.
    zelmediatypes::TimeDisplay GetRowTimeDisplay() const;
    // Whether rows snap shown times to frames.
    bool GetRowFrameAlignment() const;

private:
    void ChooseAfterRefill(const std::set<zelcaptioning::StreamFormat>& previous);

    SourceKind sourceKind_ = kSourceKind_MasterClip;
    KSL::InterfaceRef<BE::ICaptioningStream> trackStream_;
    KSL::InterfaceRef<BE::IMasterClip> clip_;
    zelmediatypes::TimeDisplay sourceVideo_ = zelmediatypes::kTimeDisplay_Unknown;
    zelmediatypes::TimeDisplay sourceAudio_ = zelmediatypes::kTimeDisplay_Unknown;
    zelmediatypes::TimeDisplay sequenceVideo_ = zelmediatypes::kTimeDisplay_Unknown;
    zelmediatypes::TimeDisplay sequenceAudio_ = zelmediatypes::kTimeDisplay_Unknown;
    bool sourceFlag_ = true;
    bool sequenceFlag_ = true;
    std::set<zelcaptioning::StreamFormat> available_;
    zelcaptioning::StreamFormat chosen_ = zelcaptioning::kStreamFormat_None;
    KSL::InterfaceRef<BE::ISequence> sequence_;
};

} // namespace HandlerCaptions
