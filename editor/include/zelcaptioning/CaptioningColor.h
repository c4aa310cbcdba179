#pragma once

#include "zelcaptioning/StreamFormat.h"
#include "zelcore/UTF16String.h"

#include <iosfwd>
#include <map>

namespace zelcaptioning {

inline constexpr float kAlphaValue_Opaque = 1.0f;
inline constexpr float kAlphaValue_Transparent = 0.0f;

// An RGBA colour, each component from 0.0 to 1.0.
class CaptioningColor {
public:
    // Which colour of a span a list of legal colours is wanted for; the values
    // match the toolbar's colour target.
    enum ColorType : std::int32_t {
        kColorType_Text = 0,
        kColorType_Background = 1,
        kColorType_Edge = 2,
    };

    float red = 0.0f;
    float green = 0.0f;
    float blue = 0.0f;
    float alpha = 0.0f;

    constexpr CaptioningColor() = default;
    constexpr CaptioningColor(float r, float g, float b, float a)
        : red(r)
        , green(g)
        , blue(b)
        , alpha(a) {}

    void SetRGBA(float r, float g, float b, float a) { *this = CaptioningColor(r, g, b, a); }
    float Alpha() const { return alpha; }
    void SetAlpha(float a) { alpha = a; }
    bool IsTransparent() const { return alpha == kAlphaValue_Transparent; }

    friend bool operator==(const CaptioningColor&, const CaptioningColor&) = default;

    // Component-wise order (red, green, blue, alpha), so colours can key an ordered map.
    friend bool operator<(const CaptioningColor& a, const CaptioningColor& b);

    // Fills `colors` with every colour the stream format allows for that use,
    // each with its display name, and returns true; returns false and leaves the
    // map empty when the format restricts nothing (open captions, no format).
    // Background colours are listed opaque; their legal opacities come from
    // EnumerateLegalOpacities.
    static bool EnumerateLegalColors(StreamFormat format, ColorType type,
                                     std::map<CaptioningColor, zelcore::UTF16String>& colors);

    // The opacities (alpha values) the format allows for that use, with their
    // display names; false when the format restricts nothing.
    static bool EnumerateLegalOpacities(StreamFormat format, ColorType type,
                                        std::map<float, zelcore::UTF16String>& opacities);
};

inline constexpr CaptioningColor kCaptioningColor_White{1.0f, 1.0f, 1.0f, kAlphaValue_Opaque};
inline constexpr CaptioningColor kCaptioningColor_Black{0.0f, 0.0f, 0.0f, kAlphaValue_Opaque};
inline constexpr CaptioningColor kCaptioningColor_Transparent{0.0f, 0.0f, 0.0f,
                                                              kAlphaValue_Transparent};

std::ostream& operator<<(std::ostream& os, const CaptioningColor& color);

} // namespace zelcaptioning
