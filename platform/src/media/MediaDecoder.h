#pragma once

#include "FFmpegHandles.h"
#include "FrameScaler.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>

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

    // The frame whose display interval holds `time` (from the first frame of the stream),
    // scaled to `size`; past the end, the last frame. With a keyframe sink, the keyframe the
    // decode starts from is handed to it first unless it is itself the frame asked for.
    // Throws MediaError when no picture can be decoded, DecodeCancelled when stopped.
    VF::VideoFrame DecodeFrame(zelmediatypes::TickTime time, ML::FrameSize size,
                               const KeyframeSink& keyframeSink, const StopCheck& shouldStop);

private:
    std::int64_t ToStreamTimestamp(zelmediatypes::TickTime time) const;
    zelmediatypes::TickTime ToMediaTime(std::int64_t timestamp) const;
    bool CanDecodeOnTo(std::int64_t targetTimestamp) const;
    void SeekBefore(std::int64_t targetTimestamp);
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
};

} // namespace platform::media
