#include "CaptionSource.h"

#include "MZ/CaptioningStreamQueries.h"

namespace HandlerCaptions {

using zelcaptioning::StreamFormat;
using zelmediatypes::TimeDisplay;

namespace {

bool Store(TimeDisplay& stored, TimeDisplay display) {
    const bool changed = stored != display;
    stored = display;
    return changed;
}

bool Store(bool& stored, bool flag) {
    const bool changed = stored != flag;
    stored = flag;
    return changed;
}

} // namespace

void CaptionSource::SetSource(SourceKind kind,
                              KSL::InterfaceRef<BE::ICaptioningStream> trackStream) {
    sourceKind_ = kind;
    trackStream_ = kind == kSourceKind_MasterClip ? KSL::InterfaceRef<BE::ICaptioningStream>()
                                                  : std::move(trackStream);
}

KSL::InterfaceRef<BE::ICaptioningStream> CaptionSource::ResolveStream() const {
    if (!clip_) {
        return {};
    }
    if (sourceKind_ != kSourceKind_MasterClip) {
        return trackStream_;
    }
    if (chosen_ != zelcaptioning::kStreamFormat_None) {
        return MZ::CaptioningStreamFromMasterClip(clip_, chosen_);
    }
    std::set<StreamFormat> offered;
    if (!BE::QueryAvailableCaptioningStreamFormats(clip_, offered)) {
        return {};
    }
    return BE::CaptioningStreamFromMasterClip(clip_, *offered.begin());
}

void CaptionSource::ResetFormats() {
    sourceVideo_ = sourceAudio_ = sequenceVideo_ = sequenceAudio_ =
        zelmediatypes::kTimeDisplay_Unknown;
    sourceFlag_ = sequenceFlag_ = true;
    available_.clear();
    chosen_ = zelcaptioning::kStreamFormat_None;
    if (sourceKind_ == kSourceKind_MasterClip) {
        MZ::QueryAvailableCaptioningStreamFormats(clip_, available_);
    } else if (const KSL::InterfaceRef<BE::ICaptioningStream> stream = ResolveStream()) {
        chosen_ = stream->GetStreamFormat();
        available_.insert(chosen_);
    }
    if (!available_.contains(chosen_)) {
        ChooseAfterRefill({});
    }
}

bool CaptionSource::RefreshFormats() {
    if (!clip_) {
        return false;
    }
    const std::set<StreamFormat> previous = available_;
    const StreamFormat before = chosen_;
    if (sourceKind_ == kSourceKind_MasterClip) {
        MZ::QueryAvailableCaptioningStreamFormats(clip_, available_);
    } else {
        available_.clear();
        if (trackStream_) {
            available_.insert(trackStream_->GetStreamFormat());
        }
    }
    if (chosen_ == zelcaptioning::kStreamFormat_None || !available_.contains(chosen_)) {
        ChooseAfterRefill(previous);
    }
    return chosen_ != before;
}

void CaptionSource::ChooseAfterRefill(const std::set<StreamFormat>& previous) {
    for (const StreamFormat format : available_) {
        if (!previous.contains(format)) {
            chosen_ = format;
            return;
        }
    }
    chosen_ = available_.empty() ? zelcaptioning::kStreamFormat_None : *available_.begin();
}

bool CaptionSource::ChooseFormat(StreamFormat format) {
    if (!available_.contains(format)) {
        return false;
    }
    chosen_ = format;
    return true;
}

bool CaptionSource::NeedsFormatRefresh() const {
    if (chosen_ != zelcaptioning::kStreamFormat_None) {
        return false;
    }
    if (sourceKind_ == kSourceKind_MasterClip) {
        std::set<StreamFormat> offered;
        return MZ::QueryAvailableCaptioningStreamFormats(clip_, offered);
    }
    const KSL::InterfaceRef<BE::ICaptioningStream> stream = ResolveStream();
    return stream && stream->GetStreamFormat() != chosen_;
}

bool CaptionSource::SetSourceVideoFormat(TimeDisplay display) {
    return Store(sourceVideo_, display);
}
bool CaptionSource::SetSourceAudioFormat(TimeDisplay display) {
    return Store(sourceAudio_, display);
}
bool CaptionSource::SetSequenceVideoFormat(TimeDisplay display) {
    return Store(sequenceVideo_, display);
}
bool CaptionSource::SetSequenceAudioFormat(TimeDisplay display) {
    return Store(sequenceAudio_, display);
}
bool CaptionSource::SetSourceFlag(bool flag) {
    return Store(sourceFlag_, flag);
}
bool CaptionSource::SetSequenceFlag(bool flag) {
    return Store(sequenceFlag_, flag);
}

TimeDisplay CaptionSource::GetRowTimeDisplay() const {
    return sourceKind_ == kSourceKind_MasterClip ? sourceVideo_ : sequenceVideo_;
}

bool CaptionSource::GetRowFrameAlignment() const {
    return sourceKind_ == kSourceKind_MasterClip ? sourceFlag_ : !sequenceFlag_;
}

} // namespace HandlerCaptions
