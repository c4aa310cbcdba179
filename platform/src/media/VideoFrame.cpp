#include "VF/VideoFrame.h"

#include <stdexcept>
#include <utility>

namespace VF {
namespace {

constexpr std::ptrdiff_t kRowAlignmentBytes = 64;

std::ptrdiff_t PaddedStrideBytes(int widthPx) {
    const std::ptrdiff_t rowBytes = std::ptrdiff_t{widthPx} * 4;
    return (rowBytes + kRowAlignmentBytes - 1) / kRowAlignmentBytes * kRowAlignmentBytes;
}

} // namespace

VideoFrame::VideoFrame(int widthPx, int heightPx)
    : widthPx_(widthPx)
    , heightPx_(heightPx) {
    if (widthPx < 0 || heightPx < 0 || widthPx > kMaxDimensionPx || heightPx > kMaxDimensionPx) {
        throw std::invalid_argument("a video frame is 0 to 16384 pixels wide and high");
    }
    strideBytes_ = PaddedStrideBytes(widthPx);
    pixels_.resize(static_cast<std::size_t>(strideBytes_ * heightPx));
    for (int y = 0; y < heightPx; ++y) {
        std::uint8_t* row = GetRow(y);
        for (int x = 0; x < widthPx; ++x) {
            row[4 * x + 3] = 255;
        }
    }
}

VideoFrame VideoFrame::MakeError(std::string errorText) {
    VideoFrame frame(0, 0);
    frame.errorText_ = errorText.empty() ? std::string("unknown error") : std::move(errorText);
    return frame;
}

} // namespace VF
