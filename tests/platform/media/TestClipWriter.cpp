#include "TestClipWriter.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace media_test {
namespace {

constexpr int kStripeCount = 8;

void Check(int result, const char* call) {
    if (result < 0) {
        char text[AV_ERROR_MAX_STRING_SIZE] = {};
        av_strerror(result, text, sizeof text);
        throw std::runtime_error(std::string(call) + " failed: " + text);
    }
}

template <typename T> T* CheckAllocated(T* object, const char* call) {
    if (!object) {
        throw std::runtime_error(std::string(call) + " failed");
    }
    return object;
}

struct Muxer {
    AVFormatContext* format = nullptr;
    ~Muxer() {
        if (format && !(format->oformat->flags & AVFMT_NOFILE)) {
            avio_closep(&format->pb);
        }
        avformat_free_context(format);
    }
};

using CodecContextPtr = std::unique_ptr<AVCodecContext, void (*)(AVCodecContext*)>;

void WritePackets(AVCodecContext* encoder, AVFormatContext* format, AVStream* stream,
                  AVPacket* packet, bool oneFramePackets = true) {
    while (true) {
        const int result = avcodec_receive_packet(encoder, packet);
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) {
            return;
        }
        Check(result, "avcodec_receive_packet");
        // One frame each; without it the muxer's edit list would end before the last frame.
        if (oneFramePackets) {
            packet->duration = 1;
        }
        av_packet_rescale_ts(packet, encoder->time_base, stream->time_base);
        packet->stream_index = stream->index;
        Check(av_interleaved_write_frame(format, packet), "av_interleaved_write_frame");
    }
}

// The beep track: 16-bit mono PCM, one packet per video frame's worth of samples.
struct SoundTrack {
    CodecContextPtr encoder{nullptr, [](AVCodecContext* c) {
                                avcodec_free_context(&c);
                            }};
    AVStream* stream = nullptr;
};

SoundTrack AddSoundTrack(AVFormatContext* format, const ClipSpec& spec) {
    SoundTrack track;
    const AVCodec* codec =
        CheckAllocated(avcodec_find_encoder(AV_CODEC_ID_PCM_S16LE), "avcodec_find_encoder");
    track.stream = CheckAllocated(avformat_new_stream(format, nullptr), "avformat_new_stream");
    track.encoder.reset(CheckAllocated(avcodec_alloc_context3(codec), "avcodec_alloc_context3"));
    track.encoder->sample_fmt = AV_SAMPLE_FMT_S16;
    track.encoder->sample_rate = spec.audioSampleRateHz;
    av_channel_layout_default(&track.encoder->ch_layout, 1);
    track.encoder->time_base = {1, spec.audioSampleRateHz};
    Check(avcodec_open2(track.encoder.get(), codec, nullptr), "avcodec_open2");
    Check(avcodec_parameters_from_context(track.stream->codecpar, track.encoder.get()),
          "avcodec_parameters_from_context");
    track.stream->time_base = track.encoder->time_base;
    return track;
}

void WriteSound(SoundTrack& track, AVFormatContext* format, const ClipSpec& spec,
                AVPacket* packet) {
    const std::int64_t rate = spec.audioSampleRateHz;
    const std::int64_t total =
        spec.frameCount * rate * spec.frameRateDenominator / spec.frameRateNumerator;
    std::vector<std::int16_t> samples(static_cast<std::size_t>(total), 0);
    for (const int beep : spec.beepFrames) {
        const std::int64_t begin =
            beep * rate * spec.frameRateDenominator / spec.frameRateNumerator;
        const std::int64_t end =
            (beep + 1) * rate * spec.frameRateDenominator / spec.frameRateNumerator;
        for (std::int64_t i = begin; i < std::min(end, total); ++i) {
            const double phase = 2 * 3.141592653589793 * 1000 * static_cast<double>(i) / rate;
            // A sine that starts at its peak, so the first sample of a beep is already loud.
            samples[static_cast<std::size_t>(i)] =
                static_cast<std::int16_t>(std::lround(32767 * kBeepAmplitude * std::cos(phase)));
        }
    }
    std::unique_ptr<AVFrame, void (*)(AVFrame*)> frame(
        CheckAllocated(av_frame_alloc(), "av_frame_alloc"), [](AVFrame* f) { av_frame_free(&f); });
    constexpr std::int64_t kChunk = 1024;
    for (std::int64_t at = 0; at < total; at += kChunk) {
        av_frame_unref(frame.get());
        frame->format = AV_SAMPLE_FMT_S16;
        frame->sample_rate = spec.audioSampleRateHz;
        av_channel_layout_default(&frame->ch_layout, 1);
        frame->nb_samples = static_cast<int>(std::min(kChunk, total - at));
        Check(av_frame_get_buffer(frame.get(), 0), "av_frame_get_buffer");
        std::copy_n(samples.data() + at, frame->nb_samples,
                    reinterpret_cast<std::int16_t*>(frame->data[0]));
        frame->pts = at;
        Check(avcodec_send_frame(track.encoder.get(), frame.get()), "avcodec_send_frame");
        WritePackets(track.encoder.get(), format, track.stream, packet, false);
    }
    Check(avcodec_send_frame(track.encoder.get(), nullptr), "avcodec_send_frame");
    WritePackets(track.encoder.get(), format, track.stream, packet, false);
}

} // namespace

void WriteClip(const std::string& pathUtf8, const ClipSpec& spec, const FramePainter& painter) {
    Muxer muxer;
    Check(avformat_alloc_output_context2(
              &muxer.format, nullptr, spec.audioSampleRateHz > 0 ? "mov" : "mp4", pathUtf8.c_str()),
          "avformat_alloc_output_context2");
    const AVCodec* codec =
        CheckAllocated(avcodec_find_encoder(AV_CODEC_ID_MPEG4), "avcodec_find_encoder");
    AVStream* stream =
        CheckAllocated(avformat_new_stream(muxer.format, nullptr), "avformat_new_stream");

    std::unique_ptr<AVCodecContext, void (*)(AVCodecContext*)> encoder(
        CheckAllocated(avcodec_alloc_context3(codec), "avcodec_alloc_context3"),
        [](AVCodecContext* context) { avcodec_free_context(&context); });
    encoder->width = spec.widthPx;
    encoder->height = spec.heightPx;
    encoder->pix_fmt = AV_PIX_FMT_YUV420P;
    encoder->time_base = {spec.frameRateDenominator, spec.frameRateNumerator};
    encoder->framerate = {spec.frameRateNumerator, spec.frameRateDenominator};
    encoder->gop_size = spec.keyframeIntervalFrames;
    encoder->max_b_frames = spec.maxBFrames;
    encoder->flags |= AV_CODEC_FLAG_QSCALE;
    encoder->global_quality = FF_QP2LAMBDA * spec.quantiser;
    if (muxer.format->oformat->flags & AVFMT_GLOBALHEADER) {
        encoder->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    }
    // Keyframes only where the interval puts them, so tests know where they are.
    Check(av_opt_set_int(encoder->priv_data, "sc_threshold", 1000000000, 0), "av_opt_set_int");
    Check(avcodec_open2(encoder.get(), codec, nullptr), "avcodec_open2");
    Check(avcodec_parameters_from_context(stream->codecpar, encoder.get()),
          "avcodec_parameters_from_context");
    stream->time_base = encoder->time_base;
    SoundTrack sound;
    if (spec.audioSampleRateHz > 0) {
        sound = AddSoundTrack(muxer.format, spec);
    }
    Check(avio_open(&muxer.format->pb, pathUtf8.c_str(), AVIO_FLAG_WRITE), "avio_open");
    Check(avformat_write_header(muxer.format, nullptr), "avformat_write_header");

    std::unique_ptr<AVFrame, void (*)(AVFrame*)> picture(
        CheckAllocated(av_frame_alloc(), "av_frame_alloc"),
        [](AVFrame* frame) { av_frame_free(&frame); });
    picture->format = AV_PIX_FMT_YUV420P;
    picture->width = spec.widthPx;
    picture->height = spec.heightPx;
    Check(av_frame_get_buffer(picture.get(), 0), "av_frame_get_buffer");
    std::unique_ptr<AVPacket, void (*)(AVPacket*)> packet(
        CheckAllocated(av_packet_alloc(), "av_packet_alloc"),
        [](AVPacket* p) { av_packet_free(&p); });
    std::unique_ptr<SwsContext, void (*)(SwsContext*)> converter(
        CheckAllocated(sws_getContext(spec.widthPx, spec.heightPx, AV_PIX_FMT_RGBA, spec.widthPx,
                                      spec.heightPx, AV_PIX_FMT_YUV420P, SWS_BILINEAR, nullptr,
                                      nullptr, nullptr),
                       "sws_getContext"),
        sws_freeContext);

    for (int index = 0; index < spec.frameCount; ++index) {
        VF::VideoFrame canvas(spec.widthPx, spec.heightPx);
        painter(index, canvas);
        Check(av_frame_make_writable(picture.get()), "av_frame_make_writable");
        const std::uint8_t* source[4] = {canvas.GetPixels(), nullptr, nullptr, nullptr};
        const int sourceStride[4] = {static_cast<int>(canvas.GetStrideBytes()), 0, 0, 0};
        sws_scale(converter.get(), source, sourceStride, 0, spec.heightPx, picture->data,
                  picture->linesize);
        picture->pts = index;
        Check(avcodec_send_frame(encoder.get(), picture.get()), "avcodec_send_frame");
        WritePackets(encoder.get(), muxer.format, stream, packet.get());
    }
    Check(avcodec_send_frame(encoder.get(), nullptr), "avcodec_send_frame");
    WritePackets(encoder.get(), muxer.format, stream, packet.get());
    if (sound.encoder) {
        WriteSound(sound, muxer.format, spec, packet.get());
    }
    Check(av_write_trailer(muxer.format), "av_write_trailer");
}

void PaintFrameIndex(int frameIndex, VF::VideoFrame& canvas) {
    const int widthPx = canvas.GetWidthPx();
    for (int y = 0; y < canvas.GetHeightPx(); ++y) {
        std::uint8_t* pixel = canvas.GetRow(y);
        for (int x = 0; x < widthPx; ++x, pixel += 4) {
            const int bit = kStripeCount - 1 - x * kStripeCount / widthPx;
            const std::uint8_t level = (frameIndex >> bit & 1) ? 255 : 0;
            pixel[0] = pixel[1] = pixel[2] = level;
        }
    }
}

int ReadFrameIndex(const VF::VideoFrame& frame) {
    if (frame.IsEmpty()) {
        return -1;
    }
    const std::uint8_t* row = frame.GetRow(frame.GetHeightPx() / 2);
    int index = 0;
    for (int stripe = 0; stripe < kStripeCount; ++stripe) {
        const int x = (2 * stripe + 1) * frame.GetWidthPx() / (2 * kStripeCount);
        const std::uint8_t* pixel = row + 4 * x;
        const bool white = pixel[0] > 200 && pixel[1] > 200 && pixel[2] > 200;
        const bool black = pixel[0] < 55 && pixel[1] < 55 && pixel[2] < 55;
        if (white == black) {
            return -1;
        }
        index = index << 1 | (white ? 1 : 0);
    }
    return index;
}

} // namespace media_test

namespace media_test {

std::vector<std::size_t> FindSoundOnsets(const std::vector<float>& samples, int channels,
                                         std::size_t quietFrames) {
    std::vector<std::size_t> onsets;
    std::size_t quiet = quietFrames;
    for (std::size_t frame = 0; frame * channels < samples.size(); ++frame) {
        if (std::abs(samples[frame * channels]) > kSoundThreshold) {
            if (quiet >= quietFrames) {
                onsets.push_back(frame);
            }
            quiet = 0;
        } else {
            ++quiet;
        }
    }
    return onsets;
}

} // namespace media_test
