#include "AudioDecoder.h"

#include "MediaError.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libavutil/mathematics.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <cmath>
#include <new>

namespace platform::media {
namespace {

double SecondsOf(std::int64_t timestamp, AVRational timeBase) {
    return static_cast<double>(timestamp) * timeBase.num / timeBase.den;
}

} // namespace

AudioDecoder::AudioDecoder(const std::string& pathUtf8, zelmediatypes::TickTime from,
                           const ML::AudioFormat& format)
    : pathUtf8_(pathUtf8)
    , format_(format) {
    formatContext_ = OpenMediaInput(pathUtf8_);
    AVFormatContext* context = formatContext_.get();
    const int videoIndex = av_find_best_stream(context, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (videoIndex >= 0 && context->streams[videoIndex]->start_time != AV_NOPTS_VALUE) {
        const AVStream* video = context->streams[videoIndex];
        originSeconds_ = SecondsOf(video->start_time, video->time_base);
    }
    const AVCodec* decoder = nullptr;
    streamIndex_ = av_find_best_stream(context, AVMEDIA_TYPE_AUDIO, -1, -1, &decoder, 0);
    if (streamIndex_ < 0 || !decoder) {
        streamIndex_ = -1;
        return; // silent media
    }
    for (unsigned i = 0; i < context->nb_streams; ++i) {
        if (static_cast<int>(i) != streamIndex_) {
            context->streams[i]->discard = AVDISCARD_ALL;
        }
    }
    const AVStream* stream = context->streams[streamIndex_];
    codec_.reset(avcodec_alloc_context3(decoder));
    packet_.reset(av_packet_alloc());
    decoded_.reset(av_frame_alloc());
    if (!codec_ || !packet_ || !decoded_) {
        throw std::bad_alloc();
    }
    int result = avcodec_parameters_to_context(codec_.get(), stream->codecpar);
    if (result >= 0) {
        result = avcodec_open2(codec_.get(), decoder, nullptr);
    }
    if (result < 0) {
        Fail("has sound that cannot be decoded: " + DescribeAVError(result));
    }
    AVChannelLayout outLayout;
    av_channel_layout_default(&outLayout, format_.channelCount);
    result = swr_alloc_set_opts2(&resampler_, &outLayout, AV_SAMPLE_FMT_FLT, format_.sampleRateHz,
                                 &codec_->ch_layout, codec_->sample_fmt, codec_->sample_rate, 0,
                                 nullptr);
    av_channel_layout_uninit(&outLayout);
    if (result >= 0) {
        result = swr_init(resampler_);
    }
    if (result < 0) {
        Fail("has sound that cannot be resampled: " + DescribeAVError(result));
    }
    fromSample_ = av_rescale(from.GetTicks(), format_.sampleRateHz, zelmediatypes::kTicksPerSecond);
    const double seekSeconds =
        originSeconds_ + static_cast<double>(from.GetTicks()) / zelmediatypes::kTicksPerSecond;
    const auto target = static_cast<std::int64_t>(
        std::floor(seekSeconds * stream->time_base.den / stream->time_base.num));
    if (from > zelmediatypes::kTime_Zero &&
        av_seek_frame(context, streamIndex_, target, AVSEEK_FLAG_BACKWARD) < 0) {
        av_seek_frame(context, streamIndex_, 0, AVSEEK_FLAG_BACKWARD | AVSEEK_FLAG_ANY);
    }
}

AudioDecoder::~AudioDecoder() {
    swr_free(&resampler_);
}

bool AudioDecoder::Read(std::vector<float>& samples) {
    samples.clear();
    while (samples.empty()) {
        if (!HasSound() || !DecodeNextFrame()) {
            return false;
        }
        Convert(samples);
    }
    return true;
}

bool AudioDecoder::DecodeNextFrame() {
    while (true) {
        const int received = avcodec_receive_frame(codec_.get(), decoded_.get());
        if (received == 0) {
            return true;
        }
        if (received == AVERROR_EOF || draining_) {
            return false;
        }
        if (av_read_frame(formatContext_.get(), packet_.get()) < 0) {
            draining_ = true;
            avcodec_send_packet(codec_.get(), nullptr);
            continue;
        }
        if (packet_->stream_index == streamIndex_) {
            // A damaged packet is refused; the decoder goes on with the next.
            avcodec_send_packet(codec_.get(), packet_.get());
        }
        av_packet_unref(packet_.get());
    }
}

void AudioDecoder::Convert(std::vector<float>& samples) {
    const int channels = format_.channelCount;
    if (!positioned_) {
        positioned_ = true;
        const std::int64_t timestamp = decoded_->best_effort_timestamp;
        if (timestamp != AV_NOPTS_VALUE) {
            const AVRational timeBase = formatContext_->streams[streamIndex_]->time_base;
            const double seconds = SecondsOf(timestamp, timeBase) - originSeconds_;
            const auto firstSample = std::llround(seconds * format_.sampleRateHz);
            if (firstSample > fromSample_) {
                samples.assign(static_cast<std::size_t>(firstSample - fromSample_) * channels, 0.F);
            } else {
                skipFrames_ = fromSample_ - firstSample;
            }
        }
    }
    const int capacity = swr_get_out_samples(resampler_, decoded_->nb_samples);
    const std::size_t offset = samples.size();
    samples.resize(offset + static_cast<std::size_t>(std::max(capacity, 0)) * channels);
    auto* out = reinterpret_cast<std::uint8_t*>(samples.data() + offset);
    const int converted =
        swr_convert(resampler_, &out, capacity, const_cast<const std::uint8_t**>(decoded_->data),
                    decoded_->nb_samples);
    av_frame_unref(decoded_.get());
    samples.resize(offset + static_cast<std::size_t>(std::max(converted, 0)) * channels);
    const auto skipped = std::min<std::int64_t>(skipFrames_, std::max(converted, 0));
    samples.erase(samples.begin() + static_cast<std::ptrdiff_t>(offset),
                  samples.begin() + static_cast<std::ptrdiff_t>(offset + skipped * channels));
    skipFrames_ -= skipped;
}

void AudioDecoder::Fail(const std::string& problem) const {
    throw MediaError("Media file '" + pathUtf8_ + "' " + problem);
}

} // namespace platform::media
