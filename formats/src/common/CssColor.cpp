#include "common/CssColor.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace captionformats {

using zelcaptioning::CaptioningColor;

namespace {

struct NamedColor {
    std::string_view name;
    std::uint32_t rgb;
};

constexpr std::array<NamedColor, 18> kNamedColors{{
    {"black", 0x000000},
    {"silver", 0xC0C0C0},
    {"gray", 0x808080},
    {"white", 0xFFFFFF},
    {"maroon", 0x800000},
    {"red", 0xFF0000},
    {"purple", 0x800080},
    {"fuchsia", 0xFF00FF},
    {"magenta", 0xFF00FF},
    {"green", 0x008000},
    {"lime", 0x00FF00},
    {"olive", 0x808000},
    {"yellow", 0xFFFF00},
    {"navy", 0x000080},
    {"blue", 0x0000FF},
    {"teal", 0x008080},
    {"aqua", 0x00FFFF},
    {"cyan", 0x00FFFF},
}};

CaptioningColor FromBytes(unsigned red, unsigned green, unsigned blue, unsigned alpha) {
    return {static_cast<float>(red) / 255.0f, static_cast<float>(green) / 255.0f,
            static_cast<float>(blue) / 255.0f, static_cast<float>(alpha) / 255.0f};
}

std::optional<unsigned> HexDigits(std::string_view digits) {
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc() || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

std::optional<CaptioningColor> ParseHex(std::string_view digits) {
    if (!std::all_of(digits.begin(), digits.end(),
                     [](char c) { return std::isxdigit(static_cast<unsigned char>(c)); })) {
        return std::nullopt;
    }
    if (digits.size() == 3) {
        auto nibble = [&](std::size_t i) {
            return *HexDigits(digits.substr(i, 1)) * 17;
        };
        return FromBytes(nibble(0), nibble(1), nibble(2), 255);
    }
    if (digits.size() != 6 && digits.size() != 8) {
        return std::nullopt;
    }
    auto byte = [&](std::size_t i) {
        return *HexDigits(digits.substr(i * 2, 2));
    };
    return FromBytes(byte(0), byte(1), byte(2), digits.size() == 8 ? byte(3) : 255);
}

// "r,g,b" or "r,g,b,a" with optional spaces, each 0 to 255.
std::optional<CaptioningColor> ParseComponents(std::string_view list, std::size_t count) {
    std::array<unsigned, 4> values{0, 0, 0, 255};
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t comma = list.find(',');
        if ((comma == std::string_view::npos) != (i + 1 == count)) {
            return std::nullopt;
        }
        std::string_view item = list.substr(0, comma);
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
        while (!item.empty() && item.front() == ' ') {
            item.remove_prefix(1);
        }
        while (!item.empty() && item.back() == ' ') {
            item.remove_suffix(1);
        }
        const auto [end, error] =
            std::from_chars(item.data(), item.data() + item.size(), values[i]);
        if (error != std::errc() || end != item.data() + item.size() || values[i] > 255) {
            return std::nullopt;
        }
    }
    return FromBytes(values[0], values[1], values[2], values[3]);
}

} // namespace

std::optional<CaptioningColor> ParseCssColor(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    const std::string_view value(lower);
    if (value.starts_with('#')) {
        return ParseHex(value.substr(1));
    }
    for (const auto& [prefix, count] :
         {std::pair{std::string_view("rgba("), 4}, std::pair{std::string_view("rgb("), 3}}) {
        if (value.starts_with(prefix) && value.ends_with(')')) {
            return ParseComponents(value.substr(prefix.size(), value.size() - prefix.size() - 1),
                                   static_cast<std::size_t>(count));
        }
    }
    for (const NamedColor& named : kNamedColors) {
        if (named.name == value) {
            return FromBytes(named.rgb >> 16, (named.rgb >> 8) & 0xFF, named.rgb & 0xFF, 255);
        }
    }
    return std::nullopt;
}

std::string ToHexRgb(const CaptioningColor& color) {
    auto byte = [](float component) {
        return static_cast<unsigned>(std::lround(std::clamp(component, 0.0f, 1.0f) * 255.0f));
    };
    char text[8];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(color.red), byte(color.green),
                  byte(color.blue));
    return text;
}

} // namespace captionformats
