#include "ttml/TtmlStyle.h"

#include "common/CssColor.h"

#include <pugixml.hpp>

#include <charconv>
#include <vector>

namespace captionformats::ttml {

using namespace zelcaptioning;

namespace {

std::vector<std::string_view> Words(std::string_view text) {
    std::vector<std::string_view> words;
    std::size_t position = 0;
    while (position < text.size()) {
        const std::size_t start = text.find_first_not_of(" \t\r\n", position);
        if (start == std::string_view::npos) {
            break;
        }
        const std::size_t end = std::min(text.find_first_of(" \t\r\n", start), text.size());
        words.push_back(text.substr(start, end - start));
        position = end;
    }
    return words;
}

std::optional<CaptioningColor> Color(std::string_view text) {
    if (text == "transparent") {
        return kCaptioningColor_Transparent;
    }
    return ParseCssColor(text);
}

// A length "N" + unit; the number and the unit.
std::optional<std::pair<double, std::string_view>> Length(std::string_view text) {
    std::size_t unit = 0;
    while (unit < text.size() && (std::isdigit(static_cast<unsigned char>(text[unit])) ||
                                  text[unit] == '.' || text[unit] == '-' || text[unit] == '+')) {
        ++unit;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + unit, value);
    if (error != std::errc() || end != text.data() + unit || unit == 0) {
        return std::nullopt;
    }
    return std::pair{value, text.substr(unit)};
}

// A percentage as an exact fraction of the whole ("12.5%" is 1/8).
std::optional<Rational> Percentage(std::string_view text) {
    if (!text.ends_with('%')) {
        return std::nullopt;
    }
    text.remove_suffix(1);
    const std::size_t dot = text.find('.');
    std::int64_t numerator = 0;
    std::int64_t denominator = 100;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (i == dot) {
            continue;
        }
        if (!std::isdigit(static_cast<unsigned char>(text[i])) || numerator > 100'000'000'000) {
            return std::nullopt;
        }
        numerator = numerator * 10 + (text[i] - '0');
        if (dot != std::string_view::npos && i > dot) {
            denominator *= 10;
        }
    }
    if (text.empty() || dot == 0 || dot + 1 == text.size() || denominator > 100'000'000'000) {
        return std::nullopt;
    }
    return Rational(numerator, denominator);
}

std::optional<PercentPair> PercentPairOf(std::string_view text) {
    const auto words = Words(text);
    if (words.size() != 2) {
        return std::nullopt;
    }
    const auto x = Percentage(words[0]);
    const auto y = Percentage(words[1]);
    if (!x || !y) {
        return std::nullopt;
    }
    return PercentPair{*x, *y};
}

// Font sizes in pixels; % and em against the default size.
std::optional<float> FontSize(std::string_view text) {
    const auto words = Words(text);
    if (words.empty() || words.size() > 2) {
        return std::nullopt;
    }
    const auto length = Length(words.back());
    if (!length || length->first <= 0.0) {
        return std::nullopt;
    }
    const auto& [value, unit] = *length;
    if (unit == "px") {
        return static_cast<float>(value);
    }
    if (unit == "%") {
        return static_cast<float>(value / 100.0 * TextSpanAttributes::kDefaultFontSize);
    }
    if (unit == "em") {
        return static_cast<float>(value * TextSpanAttributes::kDefaultFontSize);
    }
    return std::nullopt;
}

std::optional<TextAlignmentType> TextAlign(std::string_view text) {
    if (text == "left" || text == "start") {
        return kTextAlignment_Left;
    }
    if (text == "center") {
        return kTextAlignment_Center;
    }
    if (text == "right" || text == "end") {
        return kTextAlignment_Right;
    }
    return std::nullopt;
}

} // namespace

void TtmlStyle::MergeFrom(const TtmlStyle& over) {
    auto take = [](auto& mine, const auto& theirs) {
        if (theirs) {
            mine = theirs;
        }
    };
    take(color, over.color);
    take(backgroundColor, over.backgroundColor);
    take(fontFamily, over.fontFamily);
    take(fontSize, over.fontSize);
    take(italic, over.italic);
    take(bold, over.bold);
    take(underline, over.underline);
    take(outlineColor, over.outlineColor);
    take(outlineWidth, over.outlineWidth);
    take(textAlign, over.textAlign);
    take(origin, over.origin);
    take(extent, over.extent);
    take(displayAlign, over.displayAlign);
}

TextSpanAttributes TtmlStyle::SpanAttributes() const {
    TextSpanAttributes attributes;
    attributes.textColor = color.value_or(attributes.textColor);
    attributes.backgroundColor = backgroundColor.value_or(attributes.backgroundColor);
    if (fontFamily) {
        attributes.SetFontName(zelcore::ToUTF16(*fontFamily));
    }
    attributes.SetFontSize(fontSize.value_or(0.0f));
    attributes.SetItalicized(italic.value_or(false));
    attributes.SetBolded(bold.value_or(false));
    attributes.SetUnderlined(underline.value_or(false));
    if (outlineWidth && *outlineWidth > 0.0f) {
        attributes.SetTextEdge(TextSpanAttributes::kTextEdge_Uniform);
        attributes.edgeWidth = *outlineWidth;
        attributes.edgeColor = outlineColor.value_or(attributes.textColor);
    }
    return attributes;
}

TtmlStyle ParseStyleAttributes(const pugi::xml_node& element, const TtmlNames& names,
                               DiagnosticLog& log, const SourceLocation& where) {
    TtmlStyle style;
    for (const pugi::xml_attribute& attribute : element.attributes()) {
        if (names.SpaceOf(attribute.name()) != TtmlNames::Space::kStyling) {
            continue;
        }
        const std::string_view name = TtmlNames::LocalName(attribute.name());
        const std::string_view value = attribute.value();
        if (name == "style") {
            continue; // a style reference, resolved by the reader
        }
        bool understood = true;
        if (name == "color") {
            style.color = Color(value);
            understood = style.color.has_value();
        } else if (name == "backgroundColor") {
            style.backgroundColor = Color(value);
            understood = style.backgroundColor.has_value();
        } else if (name == "fontFamily") {
            style.fontFamily = std::string(value);
        } else if (name == "fontSize") {
            style.fontSize = FontSize(value);
            understood = style.fontSize.has_value();
        } else if (name == "fontStyle") {
            understood = value == "italic" || value == "oblique" || value == "normal";
            style.italic = understood ? std::optional(value != "normal") : std::nullopt;
        } else if (name == "fontWeight") {
            understood = value == "bold" || value == "normal";
            style.bold = understood ? std::optional(value == "bold") : std::nullopt;
        } else if (name == "textDecoration") {
            const auto words = Words(value);
            for (std::string_view word : words) {
                if (word == "underline" || word == "noUnderline" || word == "none") {
                    style.underline = word == "underline";
                }
            }
        } else if (name == "textOutline") {
            const auto words = Words(value);
            if (words.size() == 1 && words[0] == "none") {
                style.outlineWidth = 0.0f;
            } else if (!words.empty()) {
                const bool hasColor = Color(words[0]).has_value();
                style.outlineColor = hasColor ? Color(words[0]) : std::nullopt;
                const std::size_t widthIndex = hasColor ? 1 : 0;
                const auto width =
                    widthIndex < words.size() ? Length(words[widthIndex]) : std::nullopt;
                understood = width && width->second == "px";
                style.outlineWidth = understood ? static_cast<float>(width->first) : 0.0f;
            }
        } else if (name == "textAlign") {
            style.textAlign = TextAlign(value);
            understood = style.textAlign.has_value();
        } else if (name == "origin") {
            style.origin = PercentPairOf(value);
            understood = style.origin.has_value();
        } else if (name == "extent") {
            style.extent = PercentPairOf(value);
            understood = style.extent.has_value();
        } else if (name == "displayAlign") {
            style.displayAlign = value == "center"  ? DisplayAlign::kCenter
                                 : value == "after" ? DisplayAlign::kAfter
                                                    : DisplayAlign::kBefore;
            understood = value == "center" || value == "after" || value == "before";
        } else {
            log.Warn(where, "style tts:" + std::string(name) + " dropped");
            continue;
        }
        if (!understood) {
            log.Warn(where, "tts:" + std::string(name) + "=\"" + std::string(value) +
                                "\" not understood; ignored");
        }
    }
    return style;
}

} // namespace captionformats::ttml
