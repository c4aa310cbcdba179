#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/error.h>
#include <libavutil/frame.h>
}

#include <memory>
#include <string>

namespace platform::media {

// Owners of FFmpeg objects, each freed with its own function.
struct FormatContextCloser {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
struct CodecContextFreer {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
};
struct PacketFreer {
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct FrameFreer {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};

using FormatContextPtr = std::unique_ptr<AVFormatContext, FormatContextCloser>;
using CodecContextPtr = std::unique_ptr<AVCodecContext, CodecContextFreer>;
using PacketPtr = std::unique_ptr<AVPacket, PacketFreer>;
using AVFramePtr = std::unique_ptr<AVFrame, FrameFreer>;

// FFmpeg's description of an error code, e.g. "No such file or directory".
inline std::string DescribeAVError(int errorCode) {
    char text[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(errorCode, text, sizeof text);
    return text;
}

// Opens the media file and reads its stream information; throws MediaError
// naming the file and what failed.
FormatContextPtr OpenMediaInput(const std::string& pathUtf8);

} // namespace platform::media
