#include "ML/MediaProbe.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/rational.h>
}

#include <cmath>
#include <filesystem>
#include <memory>

namespace ML {
namespace {

struct FormatContextCloser {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};

std::string ErrorText(int averror) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(averror, text, sizeof text);
    return text;
}

zelmediatypes::FrameRate NearestHostRate(AVRational rate) {
    zelmediatypes::FrameRate nearest = zelmediatypes::kFrameRate_2997;
    if (rate.num <= 0 || rate.den <= 0) {
        return nearest;
    }
    const double framesPerSecond = av_q2d(rate);
    double nearestDistance = INFINITY;
    for (const zelmediatypes::FrameRate& candidate : zelmediatypes::kStandardFrameRates) {
        const double distance =
            std::abs(static_cast<double>(candidate.FramesPerSecondNumerator()) /
                         static_cast<double>(candidate.FramesPerSecondDenominator()) -
                     framesPerSecond);
        if (distance < nearestDistance) {
            nearestDistance = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace

MediaProbe ProbeMediaFile(const std::string& pathUtf8) {
    AVFormatContext* opened = nullptr;
    if (const int error = avformat_open_input(&opened, pathUtf8.c_str(), nullptr, nullptr);
        error < 0) {
        return {std::nullopt, pathUtf8 + ": " + ErrorText(error)};
    }
    const std::unique_ptr<AVFormatContext, FormatContextCloser> format(opened);
    if (const int error = avformat_find_stream_info(format.get(), nullptr); error < 0) {
        return {std::nullopt, pathUtf8 + ": " + ErrorText(error)};
    }
    const int videoIndex =
        av_find_best_stream(format.get(), AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (videoIndex < 0) {
        return {std::nullopt, pathUtf8 + ": the file has no video stream"};
    }
    const AVStream& video = *format->streams[videoIndex];
    const AVCodecParameters& codec = *video.codecpar;
    if (codec.width <= 0 || codec.height <= 0) {
        return {std::nullopt, pathUtf8 + ": the video stream has no frame size"};
    }

    BE::MasterClipSettings settings;
    settings.name = zelcore::ToUTF16(std::filesystem::path(pathUtf8).stem().string());
    settings.media = {BE::MediaSource::Kind::kFile, pathUtf8};
    settings.frameRect = zelcore::geom::RectT<int>::FromSize(0, 0, codec.width, codec.height);
    settings.frameRate = NearestHostRate(video.avg_frame_rate);
    if (codec.sample_aspect_ratio.num > 0 && codec.sample_aspect_ratio.den > 0) {
        settings.pixelAspectRatio = zelmediatypes::PixelAspectRatio(codec.sample_aspect_ratio.num,
                                                                    codec.sample_aspect_ratio.den);
    }
    // The stream's own duration when known, else the container's.
    constexpr std::int64_t kTicksPerSecond = zelmediatypes::kTicksPerSecond;
    if (video.duration > 0 && video.time_base.den > 0) {
        settings.duration = zelmediatypes::TickTime(
            av_rescale(video.duration, video.time_base.num * kTicksPerSecond, video.time_base.den));
    } else if (format->duration > 0) {
        settings.duration =
            zelmediatypes::TickTime(av_rescale(format->duration, kTicksPerSecond, AV_TIME_BASE));
    }
    return {settings, {}};
}

} // namespace ML
