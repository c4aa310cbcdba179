#pragma once

#include "FFmpegHandles.h"
#include "FrameScaler.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace platform::media {

// One media file kept open: its demuxer, the decoder of its first video stream and a scaler,
// so that a frame at a random time costs a seek and the decode of one group of pictures.
// Callers serialise use through GetMutex(); the decoder's position carries over between calls,
// so a request a little after the previous one decodes on without seeking.
class MediaDecoder {
public:
    // Called with a keyframe preview before the exact frame is decoded.
    using KeyframeSink = std::function<void(VF::VideoFrame)>;
    // Asked between packets; true abandons the decode with DecodeCancelled.
    using StopCheck = std::function<bool()>;

    // Opens the file and its video decoder, which decodes on decoderThreadCount threads (one
    // where a pool of workers already keeps the cores busy). Throws MediaError naming the file
    // and the problem.
    explicit MediaDecoder(std::string pathUtf8, int decoderThreadCount = 1);
    MediaDecoder(const MediaDecoder&) = delete;
    MediaDecoder& operator=(const MediaDecoder&) = delete;

    std::mutex& GetMutex() { return mutex_; }
    const std::string& GetPath() const { return pathUtf8_; }
    // The decoded pictures' own size, which frames of the media size have.
    ML::FrameSize GetPictureSize() const { return {codec_->width, codec_->height}; }

    // The frame whose display interval holds `time` (from the first frame of the stream),
    // scaled to `size`; past the end, the last frame. With a keyframe sink, the keyframe the
    // decode starts from is handed to it first unless it is itself the frame asked for.
    // Throws MediaError when no picture can be decoded, DecodeCancelled when stopped.
    VF::VideoFrame DecodeFrame(zelmediatypes::TickTime time, ML::FrameSize size,
                               const KeyframeSink& keyframeSink, const StopCheck& shouldStop);

    // For playing backwards: the frames shown at last, last - step, last - 2 step, ... (times
    // as DecodeFrame takes them), newest first, back to the first picture of the group of
    // pictures that shows `last` and at most maxFrames of them (at least one). Costs one seek
    // to that group's keyframe and one pass forward; a call for the times just before a group
    // returned earlier seeks straight to the keyframe before it. Throws as DecodeFrame does.
    std::vector<VF::VideoFrame> DecodeGroupBackward(zelmediatypes::TickTime last,
                                                    zelmediatypes::TickTime step,
                                                    std::size_t maxFrames, ML::FrameSize size,
                                                    const StopCheck& shouldStop);

private:
    std::int64_t ToStreamTimestamp(zelmediatypes::TickTime time) const;
    zelmediatypes::TickTime ToMediaTime(std::int64_t timestamp) const;
    bool HoldsTarget(const AVFrame& picture, std::int64_t timestamp, std::int64_t target) const;
    bool CanDecodeOnTo(std::int64_t targetTimestamp) const;
    // Decodes on from where the decoder stands, without seeking, to the picture shown at
    // `target`; a target before the current picture gets the current picture.
    VF::VideoFrame DecodeOnTo(std::int64_t target, ML::FrameSize size, const StopCheck& shouldStop);
    void SeekBefore(std::int64_t targetTimestamp);
    // Seeks to a keyframe whose first picture is shown at or before `target` (or to the first
    // keyframe), decodes that picture into current_ and returns its timestamp. Pictures that
    // end before firstWanted, and that none refers to, are not decoded on the way.
    std::int64_t SeekToGroupShowing(std::int64_t target, std::int64_t firstWanted,
                                    const StopCheck& shouldStop);
    // The timestamp of the picture in decoded_, guessed from the current one when it has none.
    std::int64_t DecodedTimestamp() const;
    // Moves the picture in decoded_ to current_.
    void KeepDecoded(std::int64_t timestamp);
    // The next decoded picture into decoded_, reading packets as needed; false at the end.
    bool DecodeNextPicture(const StopCheck& shouldStop);
    VF::VideoFrame MakeCurrentFrame(ML::FrameSize size, VF::FrameAccuracy accuracy);
    [[noreturn]] void Fail(const std::string& problem) const;

    std::string pathUtf8_;
    std::mutex mutex_;
    FormatContextPtr format_;
    CodecContextPtr codec_;
    PacketPtr packet_;
    AVFramePtr decoded_;
    AVFramePtr current_; // the last picture handed out, or decoded past
    FrameScaler scaler_;
    int streamIndex_ = -1;
    AVRational timeBase_{1, 1};
    std::int64_t startTimestamp_ = 0;
    std::int64_t frameDurationTimestamp_ = 0;
    std::int64_t currentTimestamp_ = 0;
    std::int64_t targetTimestamp_ = 0; // of the frame being decoded to
    bool hasCurrent_ = false;
    bool draining_ = false;
    // The decoding timestamp of the first packet read since the last seek: the keyframe's
    // (AV_NOPTS_VALUE when the packet had none).
    std::optional<std::int64_t> seekLandingDts_;
    // The keyframe and first picture of the group DecodeGroupBackward decoded last.
    struct GroupStart {
        std::int64_t keyframeDts = 0;
        std::int64_t firstTimestamp = 0;
    };
    std::optional<GroupStart> lastGroup_;
};

} // namespace platform::media
