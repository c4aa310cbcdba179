#pragma once

#include "BE/MasterClipSettings.h"
#include "ML/AudioOutput.h"
#include "ML/FrameRequest.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"

#include <cstdint>
#include <memory>
#include <string>

namespace platform::media {
class MediaDecoder;
class PlaybackRun;
} // namespace platform::media

namespace ML {

struct PlaybackStatistics {
    std::uint64_t framesShown = 0;
    // Frames decoded but replaced by a later one before they were taken: they came too late.
    std::uint64_t framesDropped = 0;
};

// Plays one clip in real time. Video is decoded (or, for a generated test source, drawn) on a
// worker thread a few frames ahead; backwards, a file is decoded a group of pictures at a time
// from its keyframe, and the group's frames (at most 256 MiB of them with the group queued
// before) are handed out newest first while the group before is decoded. At normal forward speed
// the sound is decoded and resampled on another and written to the audio output, whose played count
// is the master clock (a generated source, or a file without sound, plays silence). At other speeds
// the system clock runs the playback and nothing is heard. The clock starts once the first frame is
// ready.
//
// The UI thread owns the player: it calls every function, and polls TakeDueFrame often (a few
// milliseconds apart) to show the frame the clock has reached. The UI never waits for a
// decoder; Stop and the destructor join the workers, which stop between packets.
class MediaPlayer {
public:
    explicit MediaPlayer(std::unique_ptr<AudioOutput> output);
    MediaPlayer(const MediaPlayer&) = delete;
    MediaPlayer& operator=(const MediaPlayer&) = delete;
    ~MediaPlayer();

    // Plays the clip from `from` (a time of the clip's media, clamped into the clip) at `speed`
    // times normal speed, backwards when negative; frames are scaled to `size` (0 x 0: the
    // media's own size). Stops any playback first. Throws KSL::Exception for a speed of 0 or a
    // size that is negative or only half given.
    void Play(const BE::MasterClipSettings& clip, zelmediatypes::TickTime from, double speed,
              FrameSize size);
    void Stop();
    bool IsPlaying() const;
    double GetSpeed() const;

    // The media time the clock has reached; the start time until the first frame is ready.
    zelmediatypes::TickTime GetClockTime() const;

    // The newest frame whose time the clock has reached and that was not taken yet, or null;
    // earlier frames not taken are dropped and counted. An error frame when the media could
    // not be read.
    VF::VideoFrameRef TakeDueFrame();

    // Whether the clock has passed the end of the clip (its start, going backwards).
    bool HasReachedEnd() const;

    // The counts of the current or last playback.
    PlaybackStatistics GetStatistics() const;

private:
    std::unique_ptr<AudioOutput> output_;
    // The last file's video decoder, kept open so that playing it again starts at once.
    std::shared_ptr<platform::media::MediaDecoder> videoDecoder_;
    std::unique_ptr<platform::media::PlaybackRun> run_;
    PlaybackStatistics lastStatistics_;
};

} // namespace ML
