#include "scc/Cea608Code.h"

#include "scc/Cea608Characters.h"

#include <array>

namespace captionformats::cea608 {

using zelcaptioning::CaptioningColor;

namespace {

constexpr std::array<CaptioningColor, 8> kColors{{
    {1, 1, 1, 1},
    {0, 1, 0, 1},
    {0, 0, 1, 1},
    {0, 1, 1, 1},
    {1, 0, 0, 1},
    {1, 1, 0, 1},
    {1, 0, 1, 1},
    {0, 0, 0, 1},
}};

// The rows of the preamble address codes by first byte (channel bit cleared)
// and by whether the second byte is 0x60-0x7F.
int PreambleRow(std::uint8_t base, bool upper) {
    switch (base) {
    case 0x11:
        return upper ? 2 : 1;
    case 0x12:
        return upper ? 4 : 3;
    case 0x15:
        return upper ? 6 : 5;
    case 0x16:
        return upper ? 8 : 7;
    case 0x17:
        return upper ? 10 : 9;
    case 0x10:
        return upper ? 0 : 11;
    case 0x13:
        return upper ? 13 : 12;
    case 0x14:
        return upper ? 15 : 14;
    default:
        return 0;
    }
}

// Attribute bits 0-4 of a preamble or mid-row code: colour or italics, and
// underline in the lowest bit.
CodeStyle StyleOfAttribute(std::uint8_t attribute) {
    CodeStyle style;
    style.underline = (attribute & 0x01) != 0;
    const int colorCode = (attribute >> 1) & 0x07;
    if (colorCode == 7) {
        style.italic = true;
    } else {
        style.color = static_cast<std::uint8_t>(colorCode);
    }
    return style;
}

} // namespace

std::uint8_t WithParity(std::uint8_t sevenBits) {
    const auto value = static_cast<std::uint8_t>(sevenBits & 0x7F);
    return HasOddParity(value) ? value : static_cast<std::uint8_t>(value | 0x80);
}

CaptioningColor ColorOfCode(int code) {
    return kColors[static_cast<std::size_t>(code & 0x07)];
}

CaptioningColor BackgroundOfCode(std::uint8_t code) {
    if (code >= kTransparentBackground) {
        return zelcaptioning::kCaptioningColor_Transparent;
    }
    CaptioningColor color = kColors[code & 0x07];
    color.alpha = (code & 0x08) != 0 ? 0.5f : 1.0f;
    return color;
}

int CodeOfColor(const CaptioningColor& color) {
    for (std::size_t i = 0; i < kColors.size(); ++i) {
        if (kColors[i] == color) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

Code ClassifyPair(std::uint8_t firstWithParity, std::uint8_t secondWithParity) {
    Code code;
    code.first = firstWithParity & 0x7F;
    code.second = secondWithParity & 0x7F;
    const std::uint8_t first = code.first;
    const std::uint8_t second = code.second;
    if (first == 0 && second == 0) {
        code.kind = Code::Kind::kPadding;
        return code;
    }
    if (first >= 0x20 || (first == 0 && second >= 0x20)) {
        code.kind = Code::Kind::kCharacters;
        return code;
    }
    if (first < 0x10) {
        code.kind = Code::Kind::kUnknown; // extended data services belong to field 2
        return code;
    }
    code.channel = (first & 0x08) != 0 ? 2 : 1;
    const auto base = static_cast<std::uint8_t>(first & 0x17);
    if (second >= 0x40) {
        const int row = PreambleRow(base, second >= 0x60);
        if (row == 0) {
            return code;
        }
        code.kind = Code::Kind::kPreambleAddress;
        code.row = row;
        const auto attribute = static_cast<std::uint8_t>(second & 0x1F);
        if (attribute >= 0x10) {
            code.column = ((attribute >> 1) & 0x07) * 4;
            code.style.color = 0;
            code.style.underline = (attribute & 0x01) != 0;
        } else {
            code.style = StyleOfAttribute(attribute);
            if (code.style.italic) {
                code.style.color = 0; // the preamble's italics are white italics
            }
        }
        return code;
    }
    if (second < 0x20) {
        return code;
    }
    switch (base) {
    case 0x10:
        if (second < 0x30) {
            code.kind = Code::Kind::kBackground;
            code.background =
                static_cast<std::uint8_t>(((second >> 1) & 0x07) | ((second & 0x01) << 3));
        }
        break;
    case 0x11:
        if (second < 0x30) {
            code.kind = Code::Kind::kMidRow;
            code.style = StyleOfAttribute(second & 0x0F);
        } else {
            code.kind = Code::Kind::kSpecialCharacter;
            code.character = SpecialCharacter(second);
        }
        break;
    case 0x12:
    case 0x13:
        code.kind = Code::Kind::kExtendedCharacter;
        code.character = ExtendedCharacter(base, second);
        break;
    case 0x14:
        if (second < 0x30) {
            code.kind = Code::Kind::kCommand;
            code.command = static_cast<Command>(second - 0x20);
        }
        break;
    case 0x15:
        if (second < 0x30) {
            code.kind = Code::Kind::kOtherChannelControl; // field 2's commands
        }
        break;
    case 0x17:
        if (second >= 0x21 && second <= 0x23) {
            code.kind = Code::Kind::kTabOffset;
            code.tabColumns = second - 0x20;
        } else if (second == 0x2D) {
            code.kind = Code::Kind::kBackground;
            code.background = kTransparentBackground;
        } else if (second == 0x2E || second == 0x2F) {
            code.kind = Code::Kind::kMidRow;
            code.style.color = 7;
            code.style.underline = second == 0x2F;
        }
        break;
    default:
        break;
    }
    if (code.channel == 2 && code.kind != Code::Kind::kUnknown) {
        code.kind = Code::Kind::kOtherChannelControl;
    }
    return code;
}

const char* CommandName(Command command) {
    static constexpr std::array<const char*, 16> kNames{
        "RCL", "BS",  "AOF", "AON", "DER", "RU2", "RU3", "RU4",
        "FON", "RDC", "TR",  "RTD", "EDM", "CR",  "ENM", "EOC",
    };
    return kNames[static_cast<std::size_t>(command)];
}

} // namespace captionformats::cea608
