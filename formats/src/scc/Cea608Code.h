#pragma once

#include "zelcaptioning/CaptioningColor.h"

#include <array>
#include <bit>
#include <cstdint>
#include <optional>

namespace captionformats::cea608 {

// The style a preamble address code or a mid-row code sets. Colour codes turn
// italics off; the italics codes keep the colour.
struct CodeStyle {
    std::optional<std::uint8_t> color; // a colour code (ColorOfCode); none: keep the colour
    bool italic = false;
    bool underline = false;
};

// A background by its code: a colour code, plus 8 when semi-transparent, or
// kTransparentBackground.
inline constexpr std::uint8_t kTransparentBackground = 16;

enum class Command {
    kResumeCaptionLoading,    // RCL
    kBackspace,               // BS
    kAlarmOff,                // AOF
    kAlarmOn,                 // AON
    kDeleteToEndOfRow,        // DER
    kRollUp2,                 // RU2
    kRollUp3,                 // RU3
    kRollUp4,                 // RU4
    kFlashOn,                 // FON
    kResumeDirectCaptioning,  // RDC
    kTextRestart,             // TR
    kResumeTextDisplay,       // RTD
    kEraseDisplayedMemory,    // EDM
    kCarriageReturn,          // CR
    kEraseNonDisplayedMemory, // ENM
    kEndOfCaption,            // EOC
};

// One byte pair of a channel-1 field, its parity bits removed, classified.
struct Code {
    enum class Kind {
        kPadding,    // 0x00 0x00
        kCharacters, // one or two basic characters
        kCommand,
        kTabOffset,
        kPreambleAddress,
        kMidRow,
        kBackground,
        kSpecialCharacter,
        kExtendedCharacter,
        kOtherChannelControl, // a control code of data channel 2, or of field 2
        kUnknown,
    };
    Kind kind = Kind::kUnknown;
    int channel = 1; // of a control code: 1 or 2
    Command command = Command::kResumeCaptionLoading;
    int tabColumns = 0;                               // TO1 to TO3
    int row = 0;                                      // preamble: 1 to 15
    int column = 0;                                   // preamble: the indent, 0 to 28
    CodeStyle style;                                  // preamble and mid-row
    std::uint8_t background = kTransparentBackground; // background attribute
    char32_t character = 0;                           // special and extended
    std::uint8_t first = 0;                           // the pair without parity
    std::uint8_t second = 0;

    bool IsControl() const { return first >= 0x10 && first <= 0x1F; }
};

// Whether each byte has an odd number of bits set, as CEA-608 sends them.
inline constexpr std::array<bool, 256> kOddParity = [] {
    std::array<bool, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        table[byte] = std::popcount(byte) % 2 == 1;
    }
    return table;
}();

inline bool HasOddParity(std::uint8_t byte) {
    return kOddParity[byte];
}
Code ClassifyPair(std::uint8_t firstWithParity, std::uint8_t secondWithParity);

// A byte with the odd parity bit set.
std::uint8_t WithParity(std::uint8_t sevenBits);

// "RCL", "EOC", ... for diagnostics.
const char* CommandName(Command command);

// The eight CEA-608 colours by their code (white, green, blue, cyan, red,
// yellow, magenta, black); the code of a colour, or -1.
zelcaptioning::CaptioningColor ColorOfCode(int code);
int CodeOfColor(const zelcaptioning::CaptioningColor& color);
zelcaptioning::CaptioningColor BackgroundOfCode(std::uint8_t code);

} // namespace captionformats::cea608
