#include "scc/Cea608RowEncoder.h"

#include "common/CodePoints.h"
#include "scc/Cea608Characters.h"
#include "scc/Cea608Code.h"

namespace captionformats::cea608 {

using namespace zelcaptioning;

namespace {

constexpr SpanCapabilities k608Keeps{
    .italic = true, .underline = true, .textColor = true, .backgroundColor = true};
constexpr int kBlack = 7;

Word PairWithParity(std::uint8_t first, std::uint8_t second) {
    return static_cast<Word>((WithParity(first) << 8) | WithParity(second));
}

// The first byte of a row's preamble address codes and whether the row takes
// the upper half of the second byte's range.
std::pair<std::uint8_t, bool> PreambleRowBytes(int row) {
    static constexpr std::uint8_t kFirstBytes[] = {0x11, 0x11, 0x12, 0x12, 0x15, 0x15, 0x16, 0x16,
                                                   0x17, 0x17, 0x10, 0x13, 0x13, 0x14, 0x14};
    const auto index = static_cast<std::size_t>(row - 1);
    const bool upper = row == 11 ? false : row < 11 ? (row % 2 == 0) : (row % 2 == 1);
    return {kFirstBytes[index], upper};
}

} // namespace

Unit Doubled(std::uint8_t first, std::uint8_t second) {
    const Word word = PairWithParity(first, second);
    return {word, word};
}

std::vector<Cea608RowEncoder::Cell> Cea608RowEncoder::CellsOf(const CaptionTextParagraph& line) {
    std::vector<Cell> cells;
    for (std::uint64_t s = 0; s < line.GetNumSpans(); ++s) {
        const CaptionTextSpan& span = *line.GetCaptionTextSpan(s);
        losses_.NoteSpanLosses(span.StyleAttributes(), k608Keeps, captionIndex_, begin_);
        for (char32_t character : CodePoints(span.GetCaptionText())) {
            cells.push_back({character, span.StyleAttributes()});
        }
    }
    return cells;
}

Cea608RowEncoder::Style Cea608RowEncoder::LegalStyle(const TextSpanAttributes& attributes) {
    Style style;
    style.italic = attributes.IsItalicized();
    style.underline = attributes.IsUnderlined();
    CaptioningColor text = attributes.textColor;
    text.alpha = 1.0f;
    if (CodeOfColor(text) >= 0) {
        style.color = text;
    } else {
        Lose("text colour outside the CEA-608 colours written white");
    }
    const CaptioningColor& background = attributes.backgroundColor;
    if (!background.IsTransparent()) {
        CaptioningColor opaque = background;
        opaque.alpha = 1.0f;
        if (CodeOfColor(opaque) >= 0 && (background.alpha == 1.0f || background.alpha == 0.5f)) {
            style.background = background;
        } else {
            Lose("background outside the CEA-608 colours and opacities dropped");
        }
    }
    return style;
}

void Cea608RowEncoder::SendPreamble(RowPlacement place, const Style& first, bool& styled) {
    const auto [firstByte, upper] = PreambleRowBytes(place.row);
    const auto secondBase = static_cast<std::uint8_t>(0x40 | (upper ? 0x20 : 0x00));
    const int underline = first.underline ? 1 : 0;
    const int colorCode = CodeOfColor(first.color);
    if (place.column == 0 && colorCode != kBlack) {
        const int attribute = first.italic && colorCode == 0 ? 0x0E : colorCode * 2;
        units_.push_back(
            Doubled(firstByte, static_cast<std::uint8_t>(secondBase | (attribute + underline))));
        styled = !first.italic || colorCode == 0;
    } else {
        const int indent = place.column / 4;
        units_.push_back(Doubled(
            firstByte, static_cast<std::uint8_t>(secondBase | (0x10 + indent * 2 + underline))));
        if (place.column % 4 != 0) {
            units_.push_back(Doubled(0x17, static_cast<std::uint8_t>(0x20 + place.column % 4)));
        }
        styled = colorCode == 0 && !first.italic;
    }
}

std::vector<Unit> Cea608RowEncoder::MidRowCodes(const Style& from, const Style& to) const {
    const int underline = to.underline ? 1 : 0;
    std::vector<Unit> codes;
    if (!to.italic || to.color != from.color) {
        const int colorCode = CodeOfColor(to.color);
        codes.push_back(
            colorCode == kBlack
                ? Doubled(0x17, static_cast<std::uint8_t>(0x2E + underline))
                : Doubled(0x11, static_cast<std::uint8_t>(0x20 + colorCode * 2 + underline)));
    }
    if (to.italic) {
        codes.push_back(Doubled(0x11, static_cast<std::uint8_t>(0x2E + underline)));
    }
    return codes;
}

void Cea608RowEncoder::FlushPendingByte() {
    if (pendingByte_ >= 0) {
        units_.push_back({PairWithParity(static_cast<std::uint8_t>(pendingByte_), 0)});
        pendingByte_ = -1;
    }
}

void Cea608RowEncoder::SendCharacter(char32_t character) {
    std::optional<CharacterCode> code = CodeOfCharacter(character);
    if (!code) {
        Lose("characters outside the CEA-608 sets written as '?'");
        code = CodeOfCharacter(U'?');
    }
    switch (code->kind) {
    case CharacterCode::Kind::kBasic:
        if (pendingByte_ >= 0) {
            units_.push_back(
                {PairWithParity(static_cast<std::uint8_t>(pendingByte_), code->first)});
            pendingByte_ = -1;
        } else {
            pendingByte_ = code->first;
        }
        break;
    case CharacterCode::Kind::kSpecial:
        FlushPendingByte();
        units_.push_back(Doubled(code->first, code->second));
        break;
    case CharacterCode::Kind::kExtended:
        SendCharacter(code->fallback);
        FlushPendingByte();
        units_.push_back(Doubled(code->first, code->second));
        break;
    }
}

std::vector<Unit> Cea608RowEncoder::Encode(const CaptionTextParagraph& line, RowPlacement place) {
    units_.clear();
    pendingByte_ = -1;
    const std::vector<Cell> cells = CellsOf(line);
    if (cells.empty()) {
        return {};
    }
    if (place.column + static_cast<int>(cells.size()) > 32) {
        Lose("lines past column 32");
    }
    Style current;
    current.color = kCaptioningColor_White;
    const Style firstStyle = LegalStyle(cells.front().attributes);
    bool styled = false;
    SendPreamble(place, firstStyle, styled);
    if (styled) {
        current.color = firstStyle.color;
        current.italic = firstStyle.italic;
        current.underline = firstStyle.underline;
    } else {
        current.underline = firstStyle.underline;
    }
    for (const Cell& cell : cells) {
        const Style style = LegalStyle(cell.attributes);
        if (style.background != current.background) {
            FlushPendingByte();
            const CaptioningColor opaque(style.background.red, style.background.green,
                                         style.background.blue, 1.0f);
            const int semiTransparent = style.background.alpha < 1.0f ? 1 : 0;
            units_.push_back(
                style.background.IsTransparent()
                    ? Doubled(0x17, 0x2D)
                    : Doubled(0x10, static_cast<std::uint8_t>(0x20 + CodeOfColor(opaque) * 2 +
                                                              semiTransparent)));
            current.background = style.background;
        }
        bool consumed = false;
        if (style != current) {
            FlushPendingByte();
            for (const Unit& code : MidRowCodes(current, style)) {
                units_.push_back(code);
                if (!consumed && cell.character == U' ') {
                    consumed = true; // the code's space stands for this one
                } else {
                    Lose("spaces added to carry style changes");
                }
            }
            current = style;
        }
        if (!consumed) {
            SendCharacter(cell.character);
        }
    }
    FlushPendingByte();
    return std::move(units_);
}

} // namespace captionformats::cea608
