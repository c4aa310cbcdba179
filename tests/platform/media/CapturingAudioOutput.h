#pragma once

#include "ML/AudioOutput.h"

#include <cstdint>
#include <mutex>
#include <vector>

namespace media_test {

// An audio output for machines without sound: it keeps every sample written, and its played
// count moves only when the test says the device has played more (Hear), so a test sets the
// playback clock itself. Like a device it takes no more than a fifth of a second ahead.
class CapturingAudioOutput : public ML::AudioOutput {
public:
    bool Open(const ML::AudioFormat& format) override;
    std::size_t Write(const float* samples, std::size_t frameCount) override;
    std::int64_t GetPlayedFrameCount() const override;
    void Close() override;

    // The device plays up to frameCount more sample frames of what was written (fewer when
    // less is buffered); returns how many it played.
    std::int64_t Hear(std::int64_t frameCount);

    // Everything written since the last Open, interleaved.
    std::vector<float> GetSamples() const;
    std::int64_t GetWrittenFrameCount() const;
    ML::AudioFormat GetFormat() const;
    int GetOpenCount() const;
    bool IsOpen() const;

private:
    mutable std::mutex mutex_;
    ML::AudioFormat format_;
    std::vector<float> samples_;
    std::int64_t played_ = 0;
    int openCount_ = 0;
    bool open_ = false;
};

} // namespace media_test
