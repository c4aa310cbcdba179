#pragma once

#include "zelmediatypes/TickTime.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace VF {

// How closely a frame matches the time it was requested for.
enum class FrameAccuracy {
    // The media frame whose display interval holds the requested time.
    kExact,
    // The keyframe before the requested time: a quick preview that the exact frame replaces.
    kKeyframe,
};

// A picture of 8-bit RGBA pixels: bytes R, G, B, A in that order, alpha not premultiplied,
// rows top to bottom, each row GetStrideBytes() long (4 bytes a pixel, padded to a multiple of
// 64 bytes so that scalers may use wide stores).
//
// An error frame stands for a picture that could not be made: it is 0 x 0 and GetErrorText()
// says what went wrong, naming the media file.
//
// Copies are deep. The media layer hands frames out as VideoFrameRef, shared and never changed
// again, so any thread may read them; to draw on one, take a copy
// (VideoFrameManipulators::CopyFrame).
class VideoFrame {
public:
    // Sizes past this are refused: they are no picture the host can show.
    static constexpr int kMaxDimensionPx = 16384;

    // Opaque black. Throws std::invalid_argument for a negative size or one past
    // kMaxDimensionPx.
    VideoFrame(int widthPx, int heightPx);

    static VideoFrame MakeError(std::string errorText);

    int GetWidthPx() const { return widthPx_; }
    int GetHeightPx() const { return heightPx_; }
    std::ptrdiff_t GetStrideBytes() const { return strideBytes_; }
    bool IsEmpty() const { return widthPx_ == 0 || heightPx_ == 0; }

    std::uint8_t* GetPixels() { return pixels_.data(); }
    const std::uint8_t* GetPixels() const { return pixels_.data(); }
    // The first byte of row y; y must be in [0, height).
    std::uint8_t* GetRow(int yPx) { return pixels_.data() + yPx * strideBytes_; }
    const std::uint8_t* GetRow(int yPx) const { return pixels_.data() + yPx * strideBytes_; }
    std::size_t GetByteCount() const { return pixels_.size(); }

    // The start of the media frame shown, from the start of the clip's media.
    zelmediatypes::TickTime GetTime() const { return time_; }
    void SetTime(zelmediatypes::TickTime time) { time_ = time; }

    FrameAccuracy GetAccuracy() const { return accuracy_; }
    void SetAccuracy(FrameAccuracy accuracy) { accuracy_ = accuracy; }

    bool IsError() const { return !errorText_.empty(); }
    // UTF-8; empty unless IsError().
    const std::string& GetErrorText() const { return errorText_; }

private:
    int widthPx_ = 0;
    int heightPx_ = 0;
    std::ptrdiff_t strideBytes_ = 0;
    std::vector<std::uint8_t> pixels_;
    zelmediatypes::TickTime time_;
    FrameAccuracy accuracy_ = FrameAccuracy::kExact;
    std::string errorText_;
};

// A frame as the media layer hands it out: shared and read-only.
using VideoFrameRef = std::shared_ptr<const VideoFrame>;
// A frame its holder may draw on.
using MutableVideoFrameRef = std::shared_ptr<VideoFrame>;

} // namespace VF
