#include "ML/AudioOutput.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>

namespace ML {
namespace {

class ClockedAudioOutput : public AudioOutput {
public:
    bool Open(const AudioFormat& format) override {
        std::lock_guard lock(mutex_);
        format_ = format;
        written_ = 0;
        open_ = true;
        return true;
    }

    std::size_t Write(const float*, std::size_t frameCount) override {
        std::lock_guard lock(mutex_);
        if (!open_) {
            return 0;
        }
        if (written_ == 0) {
            start_ = std::chrono::steady_clock::now(); // sound starts with the first samples
        }
        // A device's buffer: a fifth of a second ahead of what was heard.
        const std::int64_t capacity = PlayedLocked() + format_.sampleRateHz / 5 - written_;
        const auto taken =
            static_cast<std::size_t>(std::clamp<std::int64_t>(capacity, 0, frameCount));
        written_ += static_cast<std::int64_t>(taken);
        return taken;
    }

    std::int64_t GetPlayedFrameCount() const override {
        std::lock_guard lock(mutex_);
        return open_ ? PlayedLocked() : 0;
    }

    void Close() override {
        std::lock_guard lock(mutex_);
        open_ = false;
    }

private:
    // Frames the clock has played, never more than were written (an underrun stops the clock).
    std::int64_t PlayedLocked() const {
        if (written_ == 0) {
            return 0;
        }
        const auto elapsed = std::chrono::steady_clock::now() - start_;
        const std::int64_t byClock =
            std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count() *
            format_.sampleRateHz / 1000000;
        return std::min(byClock, written_);
    }

    mutable std::mutex mutex_;
    AudioFormat format_;
    std::int64_t written_ = 0;
    std::chrono::steady_clock::time_point start_;
    bool open_ = false;
};

} // namespace

std::unique_ptr<AudioOutput> MakeClockedAudioOutput() {
    return std::make_unique<ClockedAudioOutput>();
}

} // namespace ML
