#pragma once

#include "FFmpegHandles.h"
#include "ML/AudioOutput.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <string>
#include <vector>

struct SwrContext;

namespace platform::media {

// The sound of a media file from a given time on, decoded and resampled to a player's format.
// Times count from the file's first video frame, as MediaDecoder's do, so that sound and
// pictures line up. Not thread-safe: one thread reads it.
class AudioDecoder {
public:
    // Opens the file's best audio stream and seeks to `from`. A file without sound is no
    // error: HasSound() is false and Read gives nothing. Throws MediaError naming the file.
    AudioDecoder(const std::string& pathUtf8, zelmediatypes::TickTime from,
                 const ML::AudioFormat& format);
    AudioDecoder(const AudioDecoder&) = delete;
    AudioDecoder& operator=(const AudioDecoder&) = delete;
    ~AudioDecoder();

    bool HasSound() const { return streamIndex_ >= 0; }

    // Replaces `samples` with the next interleaved sample frames, the first call starting
    // exactly at `from` (silence fills a gap before the file's first sound). False at the end
    // of the sound.
    bool Read(std::vector<float>& samples);

private:
    bool DecodeNextFrame();
    void Convert(std::vector<float>& samples);
    [[noreturn]] void Fail(const std::string& problem) const;

    std::string pathUtf8_;
    ML::AudioFormat format_;
    FormatContextPtr formatContext_;
    CodecContextPtr codec_;
    PacketPtr packet_;
    AVFramePtr decoded_;
    SwrContext* resampler_ = nullptr;
    int streamIndex_ = -1;
    double originSeconds_ = 0; // the first video frame's time in the file
    std::int64_t fromSample_ = 0;
    bool positioned_ = false; // whether the first frame's offset from `from` was settled
    std::int64_t skipFrames_ = 0;
    bool draining_ = false;
};

} // namespace platform::media
