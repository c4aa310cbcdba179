#include "CapturingAudioOutput.h"

#include <algorithm>

namespace media_test {

bool CapturingAudioOutput::Open(const ML::AudioFormat& format) {
    std::lock_guard lock(mutex_);
    format_ = format;
    samples_.clear();
    played_ = 0;
    ++openCount_;
    open_ = true;
    return true;
}

std::size_t CapturingAudioOutput::Write(const float* samples, std::size_t frameCount) {
    std::lock_guard lock(mutex_);
    if (!open_) {
        return 0;
    }
    const auto channels = static_cast<std::size_t>(format_.channelCount);
    const std::int64_t written = static_cast<std::int64_t>(samples_.size() / channels);
    const std::int64_t room = played_ + format_.sampleRateHz / 5 - written;
    const auto taken = static_cast<std::size_t>(
        std::clamp<std::int64_t>(room, 0, static_cast<std::int64_t>(frameCount)));
    samples_.insert(samples_.end(), samples, samples + taken * channels);
    return taken;
}

std::int64_t CapturingAudioOutput::GetPlayedFrameCount() const {
    std::lock_guard lock(mutex_);
    return played_;
}

void CapturingAudioOutput::Close() {
    std::lock_guard lock(mutex_);
    open_ = false;
}

std::int64_t CapturingAudioOutput::Hear(std::int64_t frameCount) {
    std::lock_guard lock(mutex_);
    const std::int64_t written =
        static_cast<std::int64_t>(samples_.size()) / std::max(format_.channelCount, 1);
    const std::int64_t heard = std::clamp<std::int64_t>(written - played_, 0, frameCount);
    played_ += heard;
    return heard;
}

std::vector<float> CapturingAudioOutput::GetSamples() const {
    std::lock_guard lock(mutex_);
    return samples_;
}

std::int64_t CapturingAudioOutput::GetWrittenFrameCount() const {
    std::lock_guard lock(mutex_);
    return static_cast<std::int64_t>(samples_.size()) / std::max(format_.channelCount, 1);
}

ML::AudioFormat CapturingAudioOutput::GetFormat() const {
    std::lock_guard lock(mutex_);
    return format_;
}

int CapturingAudioOutput::GetOpenCount() const {
    std::lock_guard lock(mutex_);
    return openCount_;
}

bool CapturingAudioOutput::IsOpen() const {
    std::lock_guard lock(mutex_);
    return open_;
}

} // namespace media_test
