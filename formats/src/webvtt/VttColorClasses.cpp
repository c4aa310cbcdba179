#include "webvtt/VttColorClasses.h"

#include <array>

namespace captionformats::webvtt {

using zelcaptioning::CaptioningColor;

namespace {

struct ColorClass {
    std::string_view name;
    CaptioningColor color;
};

constexpr std::array<ColorClass, 8> kColorClasses{{
    {"white", {1.0f, 1.0f, 1.0f, 1.0f}},
    {"lime", {0.0f, 1.0f, 0.0f, 1.0f}},
    {"cyan", {0.0f, 1.0f, 1.0f, 1.0f}},
    {"red", {1.0f, 0.0f, 0.0f, 1.0f}},
    {"yellow", {1.0f, 1.0f, 0.0f, 1.0f}},
    {"magenta", {1.0f, 0.0f, 1.0f, 1.0f}},
    {"blue", {0.0f, 0.0f, 1.0f, 1.0f}},
    {"black", {0.0f, 0.0f, 0.0f, 1.0f}},
}};

} // namespace

std::optional<CaptioningColor> ColorOfClass(std::string_view name) {
    for (const ColorClass& colorClass : kColorClasses) {
        if (colorClass.name == name) {
            return colorClass.color;
        }
    }
    return std::nullopt;
}

std::string_view ClassOfColor(const CaptioningColor& color) {
    for (const ColorClass& colorClass : kColorClasses) {
        if (colorClass.color == color) {
            return colorClass.name;
        }
    }
    return {};
}

} // namespace captionformats::webvtt
