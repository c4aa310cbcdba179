#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace ML {

// The sound a player writes: interleaved 32-bit float samples at this rate.
struct AudioFormat {
    int sampleRateHz = 48000;
    int channelCount = 2;

    friend bool operator==(const AudioFormat&, const AudioFormat&) = default;
};

// Where a player's sound goes, and the clock it keeps: the count of sample frames heard is the
// master clock of playback. Open, GetPlayedFrameCount and Close are called on the thread that
// owns the output (the UI thread); Write is called from the player's audio thread while the
// output is open.
class AudioOutput {
public:
    virtual ~AudioOutput() = default;

    // Starts a run of sound; the played count restarts from 0. Returns false when the output
    // cannot play now (no device); the player then keeps time by the system clock.
    virtual bool Open(const AudioFormat& format) = 0;

    // Queues up to frameCount sample frames (channelCount samples each) and returns how many
    // were taken: fewer, possibly none, when the output's buffer is full.
    virtual std::size_t Write(const float* samples, std::size_t frameCount) = 0;

    // Sample frames heard since Open: written frames minus those still buffered. Never
    // decreases during a run.
    virtual std::int64_t GetPlayedFrameCount() const = 0;

    // Ends the run and drops what is buffered. Does nothing when not open.
    virtual void Close() = 0;
};

// An output without a device: it takes samples as fast as a device would (a fixed buffer's
// worth ahead of the system clock), discards them, and counts frames played by the system
// clock. For machines without sound and for measuring playback without a device.
std::unique_ptr<AudioOutput> MakeClockedAudioOutput();

} // namespace ML
