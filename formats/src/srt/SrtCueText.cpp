#include "srt/SrtCueText.h"

#include "common/ByteScan.h"
#include "common/CharacterReference.h"
#include "common/CssColor.h"

#include <algorithm>

namespace captionformats::srt {

using zelcaptioning::TextSpanAttributes;

namespace {

// The colour of text no font tag colours; read once, as a default-made
// attribute set costs a construction and destruction.
const zelcaptioning::CaptioningColor kPlainTextColor = TextSpanAttributes().textColor;

// Tag and attribute names are ASCII: only A to Z change.
char LowercaseAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string Lowercase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        c = LowercaseAscii(c);
    }
    return lower;
}

// Whether a tag's name is `lowerName`, in any case; compared in place, as
// almost every tag is one of a few short names.
bool IsTagName(std::string_view name, std::string_view lowerName) {
    return std::equal(name.begin(), name.end(), lowerName.begin(), lowerName.end(),
                      [](char c, char lower) { return LowercaseAscii(c) == lower; });
}

// Tag names are ASCII letters.
bool IsAlpha(char c) {
    return LowercaseAscii(c) >= 'a' && LowercaseAscii(c) <= 'z';
}

// The value of attribute `name` in a tag's attribute text: quoted with " or ',
// or bare up to the next space.
std::optional<std::string_view> AttributeValue(std::string_view attributes, std::string_view name) {
    const std::string lower = Lowercase(attributes);
    std::size_t at = lower.find(name);
    while (at != std::string::npos) {
        std::size_t position = at + name.size();
        while (position < lower.size() && lower[position] == ' ') {
            ++position;
        }
        const bool startsWord = at == 0 || lower[at - 1] == ' ';
        if (startsWord && position < lower.size() && lower[position] == '=') {
            ++position;
            while (position < lower.size() && lower[position] == ' ') {
                ++position;
            }
            std::string_view rest = attributes.substr(position);
            if (!rest.empty() && (rest.front() == '"' || rest.front() == '\'')) {
                const std::size_t close = rest.find(rest.front(), 1);
                return rest.substr(1,
                                   close == std::string_view::npos ? rest.size() - 1 : close - 1);
            }
            return rest.substr(0, rest.find(' '));
        }
        at = lower.find(name, at + 1);
    }
    return std::nullopt;
}

} // namespace

void SrtCueText::Restyle() {
    const Emphasis emphasis = emphasis_.Current();
    current_.SetBolded((emphasis & kEmphasisBold) != 0);
    current_.SetItalicized((emphasis & kEmphasisItalic) != 0);
    current_.SetUnderlined((emphasis & kEmphasisUnderline) != 0);
    current_.textColor = colorStack_.empty() ? kPlainTextColor : colorStack_.back();
}

void SrtCueText::ParseLine(std::string_view line, std::uint64_t lineNumber) {
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t')) {
        line.remove_suffix(1);
    }
    std::size_t position = 0;
    std::size_t textStart = 0;
    auto flushText = [&](std::size_t upTo) {
        if (upTo > textStart) {
            builder_.Append(line.substr(textStart, upTo - textStart), CurrentAttributes());
        }
    };
    while ((position = FindFirstOf<'<', '{', '&'>(line, position)) < line.size()) {
        const char c = line[position];
        std::size_t consumed = 0;
        if (c == '<') {
            flushText(position);
            const std::string_view tag = line.substr(position);
            consumed = ParseEmphasisTag(tag);
            if (consumed == 0) {
                consumed = ParseTag(tag, lineNumber, position + 1);
            }
        } else if (c == '{') {
            flushText(position);
            consumed = ParseOverride(line.substr(position), lineNumber, position + 1);
        } else if (c == '&') {
            if (const auto reference = DecodeCharacterReference(line.substr(position))) {
                flushText(position);
                builder_.Append(reference->utf8, CurrentAttributes());
                consumed = reference->length;
            }
        }
        if (consumed == 0) {
            if (c == '<' || c == '{') {
                textStart = position; // not a tag: the character is text
            }
            ++position;
        } else {
            position += consumed;
            textStart = position;
        }
    }
    flushText(line.size());
}

std::size_t SrtCueText::ParseEmphasisTag(std::string_view text) {
    const auto tag = ReadEmphasisTag(text);
    if (!tag) {
        return 0;
    }
    emphasis_.Change(tag->name, tag->closing);
    Restyle();
    return tag->length;
}

std::size_t SrtCueText::ParseTag(std::string_view text, std::uint64_t lineNumber,
                                 std::size_t column) {
    // A tag runs to the first '>'; a '<' before it starts no tag here.
    const std::size_t close = FindFirstOf<'<', '>'>(text, 1);
    if (close == text.size() || text[close] == '<') {
        return 0;
    }
    std::string_view body = text.substr(1, close - 1);
    const bool closing = !body.empty() && body.front() == '/';
    if (closing) {
        body.remove_prefix(1);
    }
    std::size_t nameLength = 0;
    while (nameLength < body.size() && IsAlpha(body[nameLength])) {
        ++nameLength;
    }
    if (nameLength == 0) {
        return 0;
    }
    const std::string_view name = body.substr(0, nameLength);
    const std::string_view attributes = body.substr(nameLength);
    // An emphasis tag with attributes counts as one without.
    const bool emphasis = nameLength == 1 && emphasis_.Change(name.front(), closing);
    if (emphasis) {
        Restyle();
        return close + 1;
    }
    if (IsTagName(name, "font")) {
        if (closing) {
            if (!colorStack_.empty()) {
                colorStack_.pop_back();
            }
        } else {
            ApplyFontTag(attributes, lineNumber, column);
        }
    } else if (attributes.empty() || attributes.find('=') != std::string_view::npos) {
        log_.Warn(SourceLocation::AtLine(lineNumber, column), "unsupported tag <" +
                                                                  std::string(closing ? "/" : "") +
                                                                  Lowercase(name) + "> dropped");
    } else {
        return 0; // words in angle brackets, such as <LAUGHING & WHOOPS!>, are text
    }
    Restyle();
    return close + 1;
}

void SrtCueText::ApplyFontTag(std::string_view attributes, std::uint64_t lineNumber,
                              std::size_t column) {
    zelcaptioning::CaptioningColor color = CurrentAttributes().textColor;
    if (const auto value = AttributeValue(attributes, "color")) {
        if (const auto parsed = ParseCssColor(*value)) {
            color = *parsed;
        } else {
            log_.Warn(SourceLocation::AtLine(lineNumber, column),
                      "unknown font colour \"" + std::string(*value) + "\" ignored");
        }
    }
    for (const char* dropped : {"face", "size"}) {
        if (AttributeValue(attributes, dropped)) {
            log_.Warn(SourceLocation::AtLine(lineNumber, column),
                      std::string("font ") + dropped + " ignored");
        }
    }
    colorStack_.push_back(color);
}

std::size_t SrtCueText::ParseOverride(std::string_view text, std::uint64_t lineNumber,
                                      std::size_t column) {
    if (text.size() < 2 || text[1] != '\\') {
        return 0;
    }
    const std::size_t close = text.find('}');
    if (close == std::string_view::npos) {
        return 0;
    }
    const std::string_view body = text.substr(1, close - 1);
    if (body.size() == 4 && body.starts_with("\\an") && body[3] >= '1' && body[3] <= '9') {
        keypadPosition_ = body[3] - '0';
    } else {
        log_.Warn(SourceLocation::AtLine(lineNumber, column),
                  "override block {" + std::string(body) + "} dropped");
    }
    return close + 1;
}

} // namespace captionformats::srt
