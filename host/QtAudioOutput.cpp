#include "QtAudioOutput.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QIODevice>
#include <QMediaDevices>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <vector>

namespace host {
namespace {

// A fixed ring of sample bytes the sink pulls from while the player's audio thread fills it.
// Counts what the sink consumed, which (less what the sink still holds) is what was heard.
class SampleRing : public QIODevice {
public:
    void Reset(std::size_t capacityBytes) {
        std::lock_guard lock(mutex_);
        bytes_.assign(capacityBytes, 0);
        readAt_ = 0;
        size_ = 0;
        consumed_ = 0;
    }

    std::size_t Push(const char* data, std::size_t count) {
        std::lock_guard lock(mutex_);
        count = std::min(count, bytes_.size() - size_);
        for (std::size_t i = 0; i < count; ++i) {
            bytes_[(readAt_ + size_ + i) % bytes_.size()] = data[i];
        }
        size_ += count;
        return count;
    }

    qint64 GetConsumedBytes() const {
        std::lock_guard lock(mutex_);
        return consumed_;
    }

    bool isSequential() const override { return true; }
    // The sound has no end while the output is open: an empty ring is an underrun, and the
    // sink goes on pulling.
    bool atEnd() const override { return !isOpen(); }
    qint64 bytesAvailable() const override {
        std::lock_guard lock(mutex_);
        return static_cast<qint64>(size_) + QIODevice::bytesAvailable();
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        std::lock_guard lock(mutex_);
        const std::size_t count = std::min(size_, static_cast<std::size_t>(maxSize));
        for (std::size_t i = 0; i < count; ++i) {
            data[i] = bytes_[(readAt_ + i) % bytes_.size()];
        }
        readAt_ = (readAt_ + count) % std::max<std::size_t>(bytes_.size(), 1);
        size_ -= count;
        consumed_ += static_cast<qint64>(count);
        return static_cast<qint64>(count);
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    mutable std::mutex mutex_;
    std::vector<char> bytes_;
    std::size_t readAt_ = 0;
    std::size_t size_ = 0;
    qint64 consumed_ = 0;
};

class QtAudioOutput : public ML::AudioOutput {
public:
    bool Open(const ML::AudioFormat& format) override {
        Close();
        const QAudioDevice device = QMediaDevices::defaultAudioOutput();
        QAudioFormat qtFormat;
        qtFormat.setSampleRate(format.sampleRateHz);
        qtFormat.setChannelCount(format.channelCount);
        qtFormat.setSampleFormat(QAudioFormat::Float);
        if (device.isNull() || !device.isFormatSupported(qtFormat)) {
            return false;
        }
        bytesPerFrame_ = qtFormat.bytesPerFrame();
        // A fifth of a second queued ahead, a tenth in the device: short enough that pausing
        // and seeking answer at once.
        ring_.Reset(static_cast<std::size_t>(bytesPerFrame_ * format.sampleRateHz / 5));
        ring_.open(QIODevice::ReadOnly);
        sink_ = std::make_unique<QAudioSink>(device, qtFormat);
        sink_->setBufferSize(bytesPerFrame_ * format.sampleRateHz / 10);
        sink_->start(&ring_);
        if (sink_->error() != QAudio::NoError) {
            Close();
            return false;
        }
        lastPlayed_ = 0;
        return true;
    }

    std::size_t Write(const float* samples, std::size_t frameCount) override {
        const std::size_t taken = ring_.Push(reinterpret_cast<const char*>(samples),
                                             frameCount * static_cast<std::size_t>(bytesPerFrame_));
        return taken / static_cast<std::size_t>(bytesPerFrame_);
    }

    std::int64_t GetPlayedFrameCount() const override {
        if (!sink_) {
            return 0;
        }
        const qint64 held = std::max<qint64>(sink_->bufferSize() - sink_->bytesFree(), 0);
        const qint64 played = (ring_.GetConsumedBytes() - held) / bytesPerFrame_;
        lastPlayed_ = std::max(lastPlayed_, played);
        return lastPlayed_;
    }

    void Close() override {
        if (sink_) {
            sink_->stop();
            sink_.reset();
        }
        ring_.close();
    }

private:
    SampleRing ring_;
    std::unique_ptr<QAudioSink> sink_;
    int bytesPerFrame_ = 8;
    mutable qint64 lastPlayed_ = 0;
};

} // namespace

std::unique_ptr<ML::AudioOutput> MakeSystemAudioOutput() {
    return std::make_unique<QtAudioOutput>();
}

} // namespace host
