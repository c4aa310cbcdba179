#pragma once

#include "BE/MasterClipSettings.h"
#include "ML/AudioOutput.h"
#include "ML/MediaPlayer.h"
#include "VF/VideoFrame.h"
#include "zelmediatypes/TickTime.h"

#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

namespace host {

// Runs a media player for a view on the UI thread: polls it for the frame the clock has
// reached and hands each to the view, and stops at the clip's end or at a given time.
class PlaybackController {
public:
    using FrameSink = std::function<void(VF::VideoFrameRef frame)>;
    // Told once a playback ends by itself (the end of the clip or the stop time).
    using EndSink = std::function<void(zelmediatypes::TickTime lastFrameTime)>;

    PlaybackController(FrameSink showFrame, EndSink ended);

    // Replaces the sound output (stopping playback); the host's is the system's.
    void SetAudioOutput(std::unique_ptr<ML::AudioOutput> output);

    // Plays from `from` at `speed`; with stopAt, ends when the clock reaches it.
    void Play(const BE::MasterClipSettings& clip, zelmediatypes::TickTime from, double speed,
              ML::FrameSize size, std::optional<zelmediatypes::TickTime> stopAt = {});
    void Stop();
    bool IsPlaying() const { return player_->IsPlaying(); }
    // 0 when stopped.
    double GetSpeed() const { return player_->GetSpeed(); }
    zelmediatypes::TickTime GetClockTime() const { return player_->GetClockTime(); }
    ML::PlaybackStatistics GetStatistics() const { return player_->GetStatistics(); }

private:
    void Poll();

    FrameSink showFrame_;
    EndSink ended_;
    std::unique_ptr<ML::MediaPlayer> player_;
    std::optional<zelmediatypes::TickTime> stopAt_;
    zelmediatypes::TickTime lastFrameTime_;
    QTimer poll_;
};

} // namespace host
