#pragma once

#include "VF/VideoFrame.h"

#include <functional>
#include <string>
#include <vector>

namespace media_test {

struct ClipSpec {
    int widthPx = 320;
    int heightPx = 180;
    int frameRateNumerator = 25;
    int frameRateDenominator = 1;
    int frameCount = 75;
    // Every this many frames a keyframe; the encoder adds none of its own.
    int keyframeIntervalFrames = 12;
    // B-frames between reference pictures. With them the file stores pictures in decoding
    // order, and a keyframe's decoding time comes before the time it is shown.
    int maxBFrames = 0;
    // MPEG-4 Part 2 quantiser, 2 (best) to 31.
    int quantiser = 3;
    // With a sample rate, a mono 16-bit PCM sound track (the file must then be a .mov): silence
    // but for a 1 kHz beep lasting each listed frame.
    int audioSampleRateHz = 0;
    std::vector<int> beepFrames;
};

// The sample value of the beeps, and the level above which a sample counts as sound.
inline constexpr float kBeepAmplitude = 0.5F;
inline constexpr float kSoundThreshold = 0.05F;

// Paints frame `frameIndex` of the clip onto an opaque black canvas of the clip's size.
using FramePainter = std::function<void(int frameIndex, VF::VideoFrame& canvas)>;

// Encodes a real MP4 (or MOV) file of MPEG-4 Part 2 video, frame i shown from i / rate seconds
// on, with the sound the clip description asks for.
// Throws std::runtime_error naming the FFmpeg call that failed.
void WriteClip(const std::string& pathUtf8, const ClipSpec& spec, const FramePainter& painter);

// A frame-number pattern that survives compression and scaling: eight vertical stripes across
// the frame, white for a set bit of the frame index (the most significant on the left), black
// for a clear one.
void PaintFrameIndex(int frameIndex, VF::VideoFrame& canvas);

// The index PaintFrameIndex drew, read along the middle row; -1 when a stripe is neither
// clearly white nor clearly black (another picture, or a damaged one).
int ReadFrameIndex(const VF::VideoFrame& frame);

// The sample frames (of interleaved samples with `channels` channels) where a sound starts
// after at least `quietFrames` sample frames of silence.
std::vector<std::size_t> FindSoundOnsets(const std::vector<float>& samples, int channels,
                                         std::size_t quietFrames);

} // namespace media_test
