#include "MediaDecoder.h"

#include "MediaError.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace platform::media {

MediaDecoder::MediaDecoder(std::string pathUtf8, int decoderThreadCount)
    : pathUtf8_(std::move(pathUtf8)) {
    format_ = OpenMediaInput(pathUtf8_);
    AVFormatContext* format = format_.get();
    const AVCodec* decoder = nullptr;
    streamIndex_ = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (streamIndex_ == AVERROR_STREAM_NOT_FOUND) {
        Fail("has no video stream");
    }
    if (streamIndex_ < 0 || !decoder) {
        Fail("holds video in a format without a decoder here");
    }
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (static_cast<int>(i) != streamIndex_) {
            format->streams[i]->discard = AVDISCARD_ALL;
        }
    }
    const AVStream* stream = format->streams[streamIndex_];
    codec_.reset(avcodec_alloc_context3(decoder));
    packet_.reset(av_packet_alloc());
    decoded_.reset(av_frame_alloc());
    current_.reset(av_frame_alloc());
    if (!codec_ || !packet_ || !decoded_ || !current_) {
        throw std::bad_alloc();
    }
    int result = avcodec_parameters_to_context(codec_.get(), stream->codecpar);
    codec_->thread_count = decoderThreadCount;
    if (result >= 0) {
        result = avcodec_open2(codec_.get(), decoder, nullptr);
    }
    if (result < 0) {
        Fail("has a video stream that cannot be decoded: " + DescribeAVError(result));
    }
    timeBase_ = stream->time_base;
    startTimestamp_ = stream->start_time != AV_NOPTS_VALUE ? stream->start_time : 0;
    AVRational frameRate = stream->avg_frame_rate;
    if (frameRate.num <= 0 || frameRate.den <= 0) {
        frameRate = stream->r_frame_rate;
    }
    if (frameRate.num > 0 && frameRate.den > 0) {
        frameDurationTimestamp_ = av_rescale_q(1, av_inv_q(frameRate), timeBase_);
    }
}

VF::VideoFrame MediaDecoder::DecodeFrame(zelmediatypes::TickTime time, ML::FrameSize size,
                                         const KeyframeSink& keyframeSink,
                                         const StopCheck& shouldStop) {
    const std::int64_t target = ToStreamTimestamp(time);
    if (hasCurrent_ && HoldsTarget(*current_, currentTimestamp_, target)) {
        return MakeCurrentFrame(size, VF::FrameAccuracy::kExact);
    }
    if (CanDecodeOnTo(target)) {
        return DecodeOnTo(target, size, shouldStop);
    }
    SeekToGroupShowing(target, target, shouldStop);
    const bool keyframeIsTarget =
        HoldsTarget(*current_, currentTimestamp_, target) || currentTimestamp_ > target;
    if (keyframeSink && current_->key_frame && !keyframeIsTarget) {
        keyframeSink(MakeCurrentFrame(size, VF::FrameAccuracy::kKeyframe));
    }
    return DecodeOnTo(target, size, shouldStop);
}

std::vector<VF::VideoFrame> MediaDecoder::DecodeGroupBackward(zelmediatypes::TickTime last,
                                                              zelmediatypes::TickTime step,
                                                              std::size_t maxFrames,
                                                              ML::FrameSize size,
                                                              const StopCheck& shouldStop) {
    // Every picture of the group may be wanted: none is skipped while the decoder reads ahead.
    const std::int64_t groupStart = SeekToGroupShowing(
        ToStreamTimestamp(last), std::numeric_limits<std::int64_t>::min(), shouldStop);
    std::size_t count = 1;
    while (count < maxFrames &&
           ToStreamTimestamp(last - step * static_cast<std::int64_t>(count)) >= groupStart) {
        ++count;
    }
    std::vector<VF::VideoFrame> frames;
    frames.reserve(count);
    // Forward through the group, oldest time first; the pictures between the times asked for
    // are decoded only when others refer to them.
    for (std::size_t k = count; k-- > 0;) {
        const std::int64_t target = ToStreamTimestamp(last - step * static_cast<std::int64_t>(k));
        if (!frames.empty() && currentTimestamp_ > target) {
            // A picture shown for longer than a step: the one before the current is still up.
            frames.push_back(frames.back());
        } else {
            frames.push_back(DecodeOnTo(target, size, shouldStop));
        }
    }
    std::reverse(frames.begin(), frames.end());
    return frames;
}

bool MediaDecoder::HoldsTarget(const AVFrame& picture, std::int64_t timestamp,
                               std::int64_t target) const {
    const std::int64_t duration =
        picture.pkt_duration > 0 ? picture.pkt_duration : frameDurationTimestamp_;
    return timestamp <= target && target < timestamp + duration;
}

VF::VideoFrame MediaDecoder::DecodeOnTo(std::int64_t target, ML::FrameSize size,
                                        const StopCheck& shouldStop) {
    targetTimestamp_ = target;
    // A target before the first picture gets the first picture.
    const auto reached = [&] {
        return HoldsTarget(*current_, currentTimestamp_, target) || currentTimestamp_ > target;
    };
    if (hasCurrent_ && reached()) {
        return MakeCurrentFrame(size, VF::FrameAccuracy::kExact);
    }
    while (DecodeNextPicture(shouldStop)) {
        const std::int64_t timestamp = DecodedTimestamp();
        if (timestamp > target && hasCurrent_) {
            // A picture past the target: the one before it was shown at the target's time.
            VF::VideoFrame frame = MakeCurrentFrame(size, VF::FrameAccuracy::kExact);
            KeepDecoded(timestamp);
            return frame;
        }
        KeepDecoded(timestamp);
        if (reached()) {
            return MakeCurrentFrame(size, VF::FrameAccuracy::kExact);
        }
    }
    if (hasCurrent_) {
        return MakeCurrentFrame(size, VF::FrameAccuracy::kExact); // the last picture
    }
    Fail("holds no picture that can be decoded");
}

std::int64_t MediaDecoder::SeekToGroupShowing(std::int64_t target, std::int64_t firstWanted,
                                              const StopCheck& shouldStop) {
    std::int64_t seekTo = target;
    if (lastGroup_ && target < lastGroup_->firstTimestamp) {
        // A time before the last group decoded: its keyframe comes before that group's.
        seekTo = std::min(seekTo, lastGroup_->keyframeDts - 1);
    }
    std::int64_t stepBack = std::max<std::int64_t>(frameDurationTimestamp_, 1);
    while (true) {
        SeekBefore(seekTo);
        targetTimestamp_ = firstWanted;
        if (!DecodeNextPicture(shouldStop)) {
            Fail("holds no picture that can be decoded");
        }
        KeepDecoded(DecodedTimestamp());
        // A demuxer may seek by decoding time, or land on a keyframe whose group starts after
        // the target: then the search goes further back, in growing steps.
        if (currentTimestamp_ <= target || seekTo <= startTimestamp_) {
            break;
        }
        seekTo = std::max(std::min(seekTo, currentTimestamp_) - stepBack, startTimestamp_);
        stepBack *= 2;
    }
    lastGroup_.reset();
    if (seekLandingDts_ && *seekLandingDts_ != AV_NOPTS_VALUE) {
        lastGroup_ = GroupStart{*seekLandingDts_, currentTimestamp_};
    }
    return currentTimestamp_;
}

std::int64_t MediaDecoder::DecodedTimestamp() const {
    const std::int64_t timestamp = decoded_->best_effort_timestamp;
    if (timestamp != AV_NOPTS_VALUE) {
        return timestamp;
    }
    return hasCurrent_ ? currentTimestamp_ + frameDurationTimestamp_ : startTimestamp_;
}

void MediaDecoder::KeepDecoded(std::int64_t timestamp) {
    av_frame_unref(current_.get());
    av_frame_move_ref(current_.get(), decoded_.get());
    currentTimestamp_ = timestamp;
    hasCurrent_ = true;
}

std::int64_t MediaDecoder::ToStreamTimestamp(zelmediatypes::TickTime time) const {
    return startTimestamp_ + av_rescale_rnd(time.GetTicks(), timeBase_.den,
                                            zelmediatypes::kTicksPerSecond * timeBase_.num,
                                            AV_ROUND_DOWN);
}

zelmediatypes::TickTime MediaDecoder::ToMediaTime(std::int64_t timestamp) const {
    return zelmediatypes::TickTime(av_rescale_rnd(timestamp - startTimestamp_,
                                                  zelmediatypes::kTicksPerSecond * timeBase_.num,
                                                  timeBase_.den, AV_ROUND_NEAR_INF));
}

bool MediaDecoder::CanDecodeOnTo(std::int64_t targetTimestamp) const {
    if (!hasCurrent_ || draining_ || currentTimestamp_ > targetTimestamp) {
        return false;
    }
    // Decoding on is the better path only when no keyframe lies between here and the target.
    AVStream* stream = format_->streams[streamIndex_];
    const int keyframeIndex =
        av_index_search_timestamp(stream, targetTimestamp, AVSEEK_FLAG_BACKWARD);
    if (keyframeIndex < 0) {
        return false;
    }
    const AVIndexEntry* keyframe = avformat_index_get_entry(stream, keyframeIndex);
    return keyframe && keyframe->timestamp <= currentTimestamp_;
}

void MediaDecoder::SeekBefore(std::int64_t targetTimestamp) {
    int result = av_seek_frame(format_.get(), streamIndex_, targetTimestamp, AVSEEK_FLAG_BACKWARD);
    if (result < 0) {
        // Before the first keyframe some demuxers find nothing to seek to; start from the top.
        result = av_seek_frame(format_.get(), streamIndex_, startTimestamp_,
                               AVSEEK_FLAG_BACKWARD | AVSEEK_FLAG_ANY);
    }
    if (result < 0) {
        Fail("cannot be searched: " + DescribeAVError(result));
    }
    avcodec_flush_buffers(codec_.get());
    draining_ = false;
    hasCurrent_ = false;
    seekLandingDts_.reset();
}

bool MediaDecoder::DecodeNextPicture(const StopCheck& shouldStop) {
    while (true) {
        const int received = avcodec_receive_frame(codec_.get(), decoded_.get());
        if (received == 0) {
            return true;
        }
        // Any other failure is a damaged picture, skipped like the packets it came from.
        if (received == AVERROR_EOF || draining_) {
            return false;
        }
        if (shouldStop && shouldStop()) {
            throw DecodeCancelled();
        }
        if (av_read_frame(format_.get(), packet_.get()) < 0) {
            // The end, or a file cut short: flush out the pictures the decoder still holds.
            draining_ = true;
            avcodec_send_packet(codec_.get(), nullptr);
            continue;
        }
        if (packet_->stream_index == streamIndex_) {
            if (!seekLandingDts_) {
                seekLandingDts_ = packet_->dts;
            }
            // A picture that ends before the target and that no other picture refers to is
            // not decoded at all: catching up from a keyframe costs only the reference
            // pictures.
            const std::int64_t duration =
                packet_->duration > 0 ? packet_->duration : frameDurationTimestamp_;
            const bool endsBeforeTarget =
                packet_->pts != AV_NOPTS_VALUE && packet_->pts + duration <= targetTimestamp_;
            codec_->skip_frame = endsBeforeTarget ? AVDISCARD_NONREF : AVDISCARD_DEFAULT;
            // A damaged packet is refused with an error; the decoder resynchronises on the next.
            avcodec_send_packet(codec_.get(), packet_.get());
        }
        av_packet_unref(packet_.get());
    }
}

VF::VideoFrame MediaDecoder::MakeCurrentFrame(ML::FrameSize size, VF::FrameAccuracy accuracy) {
    VF::VideoFrame frame = scaler_.Scale(*current_, size);
    frame.SetTime(ToMediaTime(currentTimestamp_));
    frame.SetAccuracy(accuracy);
    return frame;
}

void MediaDecoder::Fail(const std::string& problem) const {
    throw MediaError("Media file '" + pathUtf8_ + "' " + problem);
}

} // namespace platform::media
