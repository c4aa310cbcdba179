#include "zelcaptioning/CaptioningColor.h"

#include "zelcore/Localization.h"

#include <ostream>
#include <string>
#include <tuple>

namespace zelcaptioning {
namespace {

struct NamedColor {
    CaptioningColor color;
    const char* name;
};

// The eight colours of the CEA-608 and teletext palettes.
constexpr NamedColor kBasicPalette[] = {
    {{1, 1, 1, 1}, "$$$/Corvala/Captioning/Color/White=White"},
    {{0, 1, 0, 1}, "$$$/Corvala/Captioning/Color/Green=Green"},
    {{0, 0, 1, 1}, "$$$/Corvala/Captioning/Color/Blue=Blue"},
    {{0, 1, 1, 1}, "$$$/Corvala/Captioning/Color/Cyan=Cyan"},
    {{1, 0, 0, 1}, "$$$/Corvala/Captioning/Color/Red=Red"},
    {{1, 1, 0, 1}, "$$$/Corvala/Captioning/Color/Yellow=Yellow"},
    {{1, 0, 1, 1}, "$$$/Corvala/Captioning/Color/Magenta=Magenta"},
    {{0, 0, 0, 1}, "$$$/Corvala/Captioning/Color/Black=Black"},
};

constexpr const char* kNoEdge = "$$$/Corvala/Captioning/Color/NoEdge=None";

void AddBasic(std::map<CaptioningColor, zelcore::UTF16String>& colors, bool withBlack) {
    for (const NamedColor& entry : kBasicPalette) {
        if (withBlack || entry.color != kCaptioningColor_Black) {
            colors.emplace(entry.color, zelcore::Localize(entry.name));
        }
    }
}

// CEA-708 colours: two bits per channel (0, 1/3, 2/3, 1), 64 in all. The eight
// saturated ones carry their names; the rest are named by their levels.
void Add708(std::map<CaptioningColor, zelcore::UTF16String>& colors) {
    for (int r = 0; r < 4; ++r) {
        for (int g = 0; g < 4; ++g) {
            for (int b = 0; b < 4; ++b) {
                const CaptioningColor color(static_cast<float>(r) / 3.0f,
                                            static_cast<float>(g) / 3.0f,
                                            static_cast<float>(b) / 3.0f, kAlphaValue_Opaque);
                zelcore::UTF16String name;
                for (const NamedColor& entry : kBasicPalette) {
                    if (entry.color == color) {
                        name = zelcore::Localize(entry.name);
                    }
                }
                if (name.empty()) {
                    name = zelcore::ToUTF16("R" + std::to_string(r) + " G" + std::to_string(g) +
                                            " B" + std::to_string(b));
                }
                colors.emplace(color, name);
            }
        }
    }
}

} // namespace

bool operator<(const CaptioningColor& a, const CaptioningColor& b) {
    return std::tie(a.red, a.green, a.blue, a.alpha) < std::tie(b.red, b.green, b.blue, b.alpha);
}

bool CaptioningColor::EnumerateLegalColors(
    StreamFormat format, ColorType type, std::map<CaptioningColor, zelcore::UTF16String>& colors) {
    colors.clear();
    switch (format) {
    case kStreamFormat_CEA608:
        if (type == kColorType_Edge) {
            colors.emplace(kCaptioningColor_Transparent, zelcore::Localize(kNoEdge));
        } else {
            // Text may be any of the seven colours (black only through an extended code,
            // which many decoders lack); backgrounds may also be black.
            AddBasic(colors, type == kColorType_Background);
        }
        return true;
    case kStreamFormat_Teletext:
        if (type == kColorType_Edge) {
            colors.emplace(kCaptioningColor_Transparent, zelcore::Localize(kNoEdge));
        } else {
            AddBasic(colors, true);
        }
        return true;
    case kStreamFormat_CEA708:
        Add708(colors);
        return true;
    default:
        return false;
    }
}

bool CaptioningColor::EnumerateLegalOpacities(StreamFormat format, ColorType type,
                                              std::map<float, zelcore::UTF16String>& opacities) {
    opacities.clear();
    const auto add = [&](float opacity, const char* name) {
        opacities.emplace(opacity, zelcore::Localize(name));
    };
    switch (format) {
    case kStreamFormat_CEA608:
        add(kAlphaValue_Opaque, "$$$/Corvala/Captioning/Opacity/Opaque=Opaque");
        if (type == kColorType_Background) {
            add(0.5f, "$$$/Corvala/Captioning/Opacity/SemiTransparent=Semi-transparent");
            add(kAlphaValue_Transparent, "$$$/Corvala/Captioning/Opacity/Transparent=Transparent");
        }
        return true;
    case kStreamFormat_Teletext:
        // A teletext box is either drawn or not.
        add(kAlphaValue_Opaque, "$$$/Corvala/Captioning/Opacity/Opaque=Opaque");
        if (type == kColorType_Background) {
            add(kAlphaValue_Transparent, "$$$/Corvala/Captioning/Opacity/Transparent=Transparent");
        }
        return true;
    case kStreamFormat_CEA708:
        add(kAlphaValue_Opaque, "$$$/Corvala/Captioning/Opacity/Solid=Solid");
        add(0.5f, "$$$/Corvala/Captioning/Opacity/Translucent=Translucent");
        add(kAlphaValue_Transparent, "$$$/Corvala/Captioning/Opacity/Transparent=Transparent");
        return true;
    default:
        return false;
    }
}

std::ostream& operator<<(std::ostream& os, const CaptioningColor& color) {
    return os << "rgba(" << color.red << ", " << color.green << ", " << color.blue << ", "
              << color.alpha << ')';
}

} // namespace zelcaptioning
