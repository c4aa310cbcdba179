#pragma once

#include <cstdint>
#include <memory>
#include <utility>

namespace UIF {

// The host's decals: small pictures for buttons and placeholders.
enum DecalID : std::int32_t {
    kAudioLargeDecal = 1, // 64 by 64, stands in for a picture of sound-only media
    kCaptionJustifyLeftDecal = 10,
    kCaptionJustifyCenterDecal = 11,
    kCaptionJustifyRightDecal = 12,
    kCaptionBoldDecal = 13,
    kCaptionItalicizeDecal = 14,
    kCaptionUnderlineDecal = 15,
    kCaptionMusicNoteDecal = 16,
    kCaptionBackgroundColorDecal = 17,
    kCaptionTextColorDecal = 18,
    kCaptionTextOutlineColorDecal = 19,
};

// An immutable picture; copies share the pixels.
class Bitmap {
public:
    Bitmap() = default;

    // The decal drawn for the current palette; drawn once and then shared.
    // A number that names no decal gives a null bitmap.
    static Bitmap GetBitmap(DecalID decal);

    bool IsNull() const { return !impl_; }
    // Size in device-independent pixels.
    std::int32_t GetWidth() const;
    std::int32_t GetHeight() const;

    struct Impl;
    const Impl* GetImpl() const { return impl_.get(); }
    explicit Bitmap(std::shared_ptr<const Impl> impl)
        : impl_(std::move(impl)) {}

private:
    std::shared_ptr<const Impl> impl_;
};

} // namespace UIF
