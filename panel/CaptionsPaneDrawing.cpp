// Drawing the visible rows: highlight, thumbnail (a decoded frame at the
// caption's begin, with an open caption drawn over it), and the time labels.
#include "CaptionsPane.h"

#include "HSL/CaptionRendering.h"
#include "ML/FrameService.h"
#include "RowGeometry.h"
#include "UIF/DC.h"
#include "UIF/VideoFrameBlit.h"
#include "VF/VideoFrameManipulators.h"
#include "zelui/ui/UI_NodeManager.h"

#include <algorithm>
#include <cmath>

namespace HandlerCaptions {

namespace {

constexpr const char16_t* kInLabel = u"$$$/Corvala/Handlers/CaptionView/inLabel=In:";
constexpr const char16_t* kOutLabel = u"$$$/Corvala/Handlers/CaptionView/outLabel=Out:";
constexpr std::int32_t kThumbnailLeftPx = 5;
constexpr std::int32_t kThumbnailHeightPx = 64;
constexpr std::int32_t kThumbnailMaxWidthPx = 196;
constexpr std::int32_t kLabelGapPx = 5;
constexpr std::int32_t kLabelHeightPx = row_geometry::kLineHeightPx;

} // namespace

UIF::Rect CaptionsPane::ThumbnailBox(std::int32_t rowTopPx) const {
    std::int32_t width = decal_.GetWidth();
    std::int32_t height = decal_.GetHeight();
    if (const KSL::InterfaceRef<BE::IMasterClip>& clip = source_.GetMasterClip()) {
        const BE::MasterClipSettings settings = clip->GetSettings();
        const std::int32_t frameWidth = settings.frameRect.right - settings.frameRect.left;
        const std::int32_t frameHeight = settings.frameRect.bottom - settings.frameRect.top;
        if (frameWidth > 0 && frameHeight > 0) {
            height = kThumbnailHeightPx;
            width = std::min<std::int32_t>(kThumbnailMaxWidthPx,
                                           static_cast<std::int32_t>(std::lround(
                                               settings.pixelAspectRatio.ToDouble() * frameWidth *
                                               kThumbnailHeightPx / frameHeight)));
        }
    }
    const std::int32_t half = (kThumbnailHeightPx - height) / 2;
    const std::int32_t top = rowTopPx + row_geometry::kInsetPx + (half < 1 ? 0 : half);
    return UIF::Rect::FromSize(kThumbnailLeftPx, top, width, height);
}

std::int32_t CaptionsPane::RowTimeLeftPx() const {
    return ThumbnailBox(0).right + kLabelGapPx + kLabelGapPx + labelColumnPx_ + kLabelGapPx;
}

void CaptionsPane::Draw(UIF::DC& dc, const UIF::Rect&) {
    const UIF::Rect client = GetClientRect();
    dc.FillRect(client, UIF::kColor_WindowBackground);
    const std::int32_t labelColumn = std::max(dc.GetStringWidth(kInLabel, UIF::kFont_Normal),
                                              dc.GetStringWidth(kOutLabel, UIF::kFont_Normal));
    if (labelColumn != labelColumnPx_) {
        // The time controls stand right of the labels: place them again once
        // this drawing is done.
        labelColumnPx_ = labelColumn;
        PostToMainThread([this] { UpdateVisibleRange(); });
    }
    const std::int32_t count = rows_->GetCount();
    const std::int32_t last = std::min(lastVisible_, count - 1);
    const bool open = IsOpenCaptions();
    for (std::int32_t i = std::max(0, firstVisible_); i <= last; ++i) {
        CaptionsItem& row = *rows_->At(i);
        const std::int32_t rowTop = i * kRowPitchPx - static_cast<std::int32_t>(scrollOffsetPx_);
        const UIF::Rect thumbnail = ThumbnailBox(rowTop);
        if (i == rows_->GetCurrentIndex()) {
            dc.FillRect(UIF::Rect{thumbnail.left, rowTop + 2, client.right, rowTop + 76},
                        UIF::kColor_ReversibleGray);
        }
        RequestThumbnail(row, thumbnail);
        CaptionsItem::Thumbnail& shown = row.GetThumbnail();
        if (shown.frame && !shown.frame->IsError()) {
            if (open && !shown.composed) {
                VF::MutableVideoFrameRef composed =
                    VF::VideoFrameManipulators::CopyFrame(*shown.frame);
                const zelcore::geom::RectT<int> frame =
                    source_.GetMasterClip()->GetSettings().frameRect;
                HSL::RenderOpenCaptions(*composed, *row.GetCaption(), frame.right - frame.left,
                                        frame.bottom - frame.top);
                shown.composed = std::move(composed);
            }
            UIF::VideoFrameBlit::BlitFrame(dc, open ? *shown.composed : *shown.frame, thumbnail);
        } else if (!decal_.IsNull()) {
            dc.DrawImage(decal_, thumbnail);
        }
        const std::int32_t labelLeft = thumbnail.right + kLabelGapPx + kLabelGapPx;
        dc.DrawString(kInLabel,
                      UIF::Rect::FromSize(labelLeft, rowTop + row_geometry::kInsetPx,
                                          labelColumnPx_, kLabelHeightPx),
                      UIF::kFont_Normal, UIF::kColor_ReversibleBlack);
        dc.DrawString(
            kOutLabel,
            UIF::Rect::FromSize(labelLeft,
                                rowTop + row_geometry::kInsetPx + row_geometry::kOutLineOffsetPx,
                                labelColumnPx_, kLabelHeightPx),
            UIF::kFont_Normal, UIF::kColor_ReversibleBlack);
    }
}

// Asks for the row's frame once per begin time; the answer arrives as a
// message even from the cache, so a drawn row never asks again.
void CaptionsPane::RequestThumbnail(CaptionsItem& row, const UIF::Rect& box) {
    CaptionsItem::Thumbnail& thumbnail = row.GetThumbnail();
    const zelmediatypes::TickTime begin = row.GetCaption()->GetBeginTime();
    if ((thumbnail.requested && thumbnail.requestedTime == begin) ||
        !ML::FrameService::IsRunning() || !source_.GetMasterClip()) {
        return;
    }
    if (thumbnail.requestID != 0) {
        ML::FrameService::CancelRequest(thumbnail.requestID);
        pendingFrameRequests_.erase(thumbnail.requestID);
    }
    thumbnail.requested = true;
    thumbnail.requestedTime = begin;
    thumbnail.requestID = ML::FrameService::RequestFrame(
        source_.GetMasterClip()->GetSettings(), begin, ML::FrameSize{box.Width(), box.Height()},
        ML::Refinement::kKeyframeFirst);
    pendingFrameRequests_[thumbnail.requestID] = row.weak_from_this();
}

void CaptionsPane::FrameRendered(ML::RequestID requestID, const VF::VideoFrameRef& frame,
                                 bool isFinal) {
    const auto found = pendingFrameRequests_.find(requestID);
    if (found == pendingFrameRequests_.end()) {
        return;
    }
    const std::shared_ptr<CaptionsItem> row = found->second.lock();
    if (isFinal) {
        pendingFrameRequests_.erase(found);
    }
    if (!row) {
        return;
    }
    CaptionsItem::Thumbnail& thumbnail = row->GetThumbnail();
    thumbnail.frame = frame;
    thumbnail.composed.reset();
    if (isFinal) {
        thumbnail.requestID = 0;
    }
    const std::int32_t index = rows_->IndexOf(row->GetCaption().get());
    if (index >= firstVisible_ && index <= lastVisible_) {
        const std::int32_t rowTop =
            index * kRowPitchPx - static_cast<std::int32_t>(scrollOffsetPx_);
        Invalidate(ThumbnailBox(rowTop));
    }
}

} // namespace HandlerCaptions
