// The pane's reactions to the host's messages, checked in a fixed order.
#include "CaptionsPane.h"

#include "BE/CaptionMessages.h"
#include "BE/ProjectMessages.h"
#include "BE/StreamMessages.h"
#include "CaptionsView.h"
#include "HSL/Messages.h"
#include "ML/RenderFrameCompletionMessage.h"
#include "MZ/ActivationMessages.h"
#include "MZ/CaptionMessages.h"
#include "MZ/Captioning.h"
#include "MZ/MergeClipUtils.h"
#include "MessageIds.h"

#include <set>

namespace HandlerCaptions {

namespace {

template <typename T> const T* Match(const KSL::Message& message) {
    return message.GetMessageID() == CachedMessageID<T>() ? static_cast<const T*>(&message)
                                                          : nullptr;
}

} // namespace

bool CaptionsPane::HandleMessage(const KSL::Message& message) {
    if (const auto* changed = Match<BE::CaptionsChangedMessage>(message)) {
        CaptionsChanged(*changed);
        return true;
    }
    if (Match<BE::CaptioningStreamChangedMessage>(message)) {
        StreamChanged();
        return true;
    }
    if (const auto* moved = Match<BE::CaptionsMovedMessage>(message)) {
        if (moved->GetStream() == stream_) {
            rows_->ApplyMoves(moved->GetMoves());
            UpdateVisibleRange();
            Invalidate();
        }
        return true;
    }
    if (const auto* rendered = Match<ML::RenderFrameCompletionMessage>(message)) {
        FrameRendered(rendered->GetRequestID(), rendered->GetFrame(), rendered->IsFinal());
        return true;
    }
    if (const auto* clipChanged = Match<BE::MasterClipClipChangedMessage>(message)) {
        if (clipChanged->GetMasterClip() == source_.GetMasterClip()) {
            if (!isCommitting_) {
                CommitCaptionEdit(true, {});
            }
            source_.RefreshFormats();
            ChooseStream();
        }
        return true;
    }
    if (const auto* selected = Match<MZ::MasterClipSelectedMessage>(message)) {
        ClipSelected(selected->GetMasterClip());
        return true;
    }
    if (const auto* closed = Match<MZ::MasterClipClosedMessage>(message)) {
        if (closed->GetMasterClip() && closed->GetMasterClip() == source_.GetMasterClip()) {
            LoadClip({});
        }
        return true;
    }
    if (const auto* video = Match<MZ::VideoTrackItemInfoMessage>(message)) {
        ClipSelected(video->GetMasterClip());
        return true;
    }
    if (const auto* audioVideo = Match<MZ::AudioVideoTrackItemInfoMessage>(message)) {
        ClipSelected(audioVideo->GetMasterClip());
        return true;
    }
    if (const auto* properties = Match<BE::PropertiesChangedMessage>(message)) {
        if (source_.GetSequence() && properties->Concerns(source_.GetSequence().Get())) {
            ReadSequenceFormats();
        }
        return true;
    }
    if (const auto* settings = Match<MZ::SequenceSettingsChangedMessage>(message)) {
        if (settings->GetSequence() && settings->GetSequence() == source_.GetSequence()) {
            ReadSequenceFormats();
        }
        return true;
    }
    if (const auto* source = Match<HSL::SourceClipSelectedMessage>(message)) {
        if (source->GetKind() == HSL::SourceClipSelectedMessage::kKind_MasterClip) {
            ClipSelected(source->GetClip());
        } else if (source->GetKind() == HSL::SourceClipSelectedMessage::kKind_SubClip) {
            ClipSelected(source->GetSourceClip());
        }
        return true;
    }
    if (Match<MZ::BinSelectedMessage>(message) || Match<MZ::SequenceSelectedMessage>(message)) {
        LoadClip({});
        return true;
    }
    if (const auto* units = Match<HSL::ShowAudioUnitsMessage>(message)) {
        if (source_.GetSourceKind() != CaptionSource::kSourceKind_TrackItem &&
            source_.SetSourceFlag(!units->GetShowAudioUnits())) {
            RefreshVisibleRows();
        }
        return true;
    }
    if (Match<MZ::CaptionCommitEditsMessage>(message)) {
        CommitEdits();
        return true;
    }
    return false;
}

void CaptionsPane::ClipSelected(const KSL::InterfaceRef<BE::IMasterClip>& clip) {
    if (isCommitting_) {
        return;
    }
    if (clip != source_.GetMasterClip() && !MZ::MergeClipUtils::IsMergedClip(clip)) {
        LoadClip(clip);
    }
}

void CaptionsPane::StreamChanged() {
    if (!source_.GetMasterClip()) {
        return;
    }
    source_.RefreshFormats();
    const KSL::InterfaceRef<BE::ICaptioningStream> resolved = source_.ResolveStream();
    if (resolved == stream_) {
        NotifyViewOfStream();
        RebuildRows();
        return;
    }
    ChooseStream();
}

void CaptionsPane::CaptionsChanged(const BE::CaptionsChangedMessage& message) {
    if (!stream_) {
        return;
    }
    std::set<BE::CaptionChange> changes;
    for (const BE::StreamCaptionChange& change : message.GetChanges()) {
        if (change.first == stream_) {
            changes.insert(change.second);
        }
    }
    bool countChanged = false;
    for (const BE::CaptionChange& change : changes) {
        const zelcaptioning::CaptionPtr& caption = change.caption;
        const bool inStream = stream_->FindCaptionIndex(caption.get()).has_value();
        std::int32_t index = rows_->IndexOf(caption.get());
        if (!inStream) {
            if (index >= 0) {
                rows_->At(index)->ReleaseControls();
                rows_->Remove(index);
                countChanged = true;
                if (caption == editor_->GetHostCaption()) {
                    GiveCaptionToEditor();
                }
            }
            continue;
        }
        if (index >= 0) {
            CaptionsItem& row = *rows_->At(index);
            const zelmediatypes::TickTime oldBegin = row.GetLastBeginTime();
            row.RefreshFromCaption();
            if (caption->GetBeginTime() != oldBegin) {
                index = rows_->Resort(index, oldBegin);
                countChanged = true;
            }
            if (index == rows_->GetCurrentIndex()) {
                if (changeNotificationDepth_ == 0 && !editor_->IsModified()) {
                    GiveCaptionToEditor();
                }
                if (view_) {
                    view_->RefreshToolbar();
                }
            }
            continue;
        }
        const zelcore::UTF16String text = MZ::Captioning::ConvertCaptionBlockToText(caption);
        if (!filterText_.empty() &&
            zelcore::View(text).find(zelcore::View(filterText_)) == std::u16string_view::npos) {
            continue;
        }
        rows_->Insert(rows_->InsertionIndexFor(caption->GetBeginTime()),
                      std::make_shared<CaptionsItem>(*this, caption));
        countChanged = true;
    }
    if (countChanged) {
        RelayoutAfterRowCountChange();
    }
    Invalidate();
}

} // namespace HandlerCaptions
