#pragma once

#include <cstdint>
#include <optional>

namespace captionformats::cea608 {

// The three CEA-608 character sets. Basic characters are single bytes
// 0x20-0x7F; special characters are the pair (0x11, 0x30-0x3F); extended ones
// are (0x12 or 0x13, 0x20-0x3F) and replace the character before them.
char32_t BasicCharacter(std::uint8_t code);
char32_t SpecialCharacter(std::uint8_t second);
char32_t ExtendedCharacter(std::uint8_t first, std::uint8_t second);

// How a character is sent on channel 1: a basic byte, or a pair (special or
// extended; an extended pair goes after `fallback`, a basic character a
// decoder without the extended set shows instead).
struct CharacterCode {
    enum class Kind { kBasic, kSpecial, kExtended } kind = Kind::kBasic;
    std::uint8_t first = 0;
    std::uint8_t second = 0;
    std::uint8_t fallback = 0;
};

// Nothing when CEA-608 has no such character.
std::optional<CharacterCode> CodeOfCharacter(char32_t character);

} // namespace captionformats::cea608
