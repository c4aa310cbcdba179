#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace captionformats::cea608 {

namespace detail {

// The basic set differs from ASCII at these codes.
struct Substitution {
    std::uint8_t code;
    char32_t character;
};
inline constexpr std::array<Substitution, 10> kBasicSubstitutions{{
    {0x2A, U'á'},
    {0x5C, U'é'},
    {0x5E, U'í'},
    {0x5F, U'ó'},
    {0x60, U'ú'},
    {0x7B, U'ç'},
    {0x7C, U'÷'},
    {0x7D, U'Ñ'},
    {0x7E, U'ñ'},
    {0x7F, U'\u2588'},
}};

// Each seven-bit code's character, the substitutions applied.
inline constexpr std::array<char32_t, 128> kBasic = [] {
    std::array<char32_t, 128> table{};
    for (std::size_t code = 0; code < table.size(); ++code) {
        table[code] = static_cast<char32_t>(code);
    }
    for (const Substitution& substitution : kBasicSubstitutions) {
        table[substitution.code] = substitution.character;
    }
    return table;
}();

} // namespace detail

// The three CEA-608 character sets. Basic characters are single bytes
// 0x20-0x7F; special characters are the pair (0x11, 0x30-0x3F); extended ones
// are (0x12 or 0x13, 0x20-0x3F) and replace the character before them.
inline char32_t BasicCharacter(std::uint8_t code) {
    return code < detail::kBasic.size() ? detail::kBasic[code] : code;
}

namespace detail {
inline constexpr std::array<char32_t, 256> kBasicWithParity = [] {
    std::array<char32_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte) {
        int ones = 0;
        for (std::size_t bits = byte; bits != 0; bits >>= 1) {
            ones += static_cast<int>(bits & 1);
        }
        const std::size_t code = byte & 0x7F;
        table[byte] = ones % 2 == 1 && code >= 0x20 ? kBasic[code] : 0;
    }
    return table;
}();
} // namespace detail

// The basic character a byte sends with its parity bit, or 0 when the byte
// has even parity or sends no basic character.
inline char32_t BasicCharacterWithParity(std::uint8_t byte) {
    return detail::kBasicWithParity[byte];
}
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
