#include "FrameScaler.h"

#include "MediaError.h"

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <cstdint>
#include <string>

namespace platform::media {
namespace {

// The YUV matrix and range a decoder reported, so that BT.709 and full-range media keep their
// colours; unspecified media are taken as BT.601 studio range, as libswscale does.
void ApplySourceColorspace(SwsContext* context, const AVFrame& picture) {
    int* inverseTable = nullptr;
    int sourceRange = 0;
    int* table = nullptr;
    int destinationRange = 0;
    int brightness = 0;
    int contrast = 0;
    int saturation = 0;
    if (sws_getColorspaceDetails(context, &inverseTable, &sourceRange, &table, &destinationRange,
                                 &brightness, &contrast, &saturation) < 0) {
        return; // a conversion that takes no matrix
    }
    const int colorspace =
        picture.colorspace == AVCOL_SPC_UNSPECIFIED ? SWS_CS_DEFAULT : picture.colorspace;
    sourceRange = picture.color_range == AVCOL_RANGE_JPEG ? 1 : 0;
    sws_setColorspaceDetails(context, sws_getCoefficients(colorspace), sourceRange, table,
                             destinationRange, brightness, contrast, saturation);
}

} // namespace

FrameScaler::~FrameScaler() {
    sws_freeContext(context_);
}

VF::VideoFrame FrameScaler::Scale(const AVFrame& picture, ML::FrameSize size) {
    const int widthPx = size.IsMediaSize() ? picture.width : size.widthPx;
    const int heightPx = size.IsMediaSize() ? picture.height : size.heightPx;
    VF::VideoFrame frame(widthPx, heightPx);
    if (frame.IsEmpty()) {
        return frame;
    }
    const auto sourceFormat = static_cast<AVPixelFormat>(picture.format);
    context_ =
        sws_getCachedContext(context_, picture.width, picture.height, sourceFormat, widthPx,
                             heightPx, AV_PIX_FMT_RGBA, SWS_BILINEAR, nullptr, nullptr, nullptr);
    if (!context_) {
        const char* formatName = av_get_pix_fmt_name(sourceFormat);
        throw MediaError(std::string("cannot convert pictures of pixel format ") +
                         (formatName ? formatName : "unknown") + " to RGBA");
    }
    ApplySourceColorspace(context_, picture);
    std::uint8_t* destination[4] = {frame.GetPixels(), nullptr, nullptr, nullptr};
    const int destinationStride[4] = {static_cast<int>(frame.GetStrideBytes()), 0, 0, 0};
    sws_scale(context_, picture.data, picture.linesize, 0, picture.height, destination,
              destinationStride);
    return frame;
}

} // namespace platform::media
