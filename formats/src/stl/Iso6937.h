#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace captionformats::stl {

// EBU STL code table 00: ISO 6937 (Latin). A byte 0xC1-0xCF is a non-spacing
// diacritical mark that combines with the letter after it.
// The character of a single byte 0x20-0x7F or 0xA0-0xFF; nothing for a
// diacritical mark or an unassigned byte.
std::optional<char32_t> Iso6937Character(std::uint8_t byte);
bool IsIso6937Diacritic(std::uint8_t byte);
// The precomposed letter of `diacritic` over `base`, or nothing.
std::optional<char32_t> Iso6937Compose(std::uint8_t diacritic, char32_t base);

// The bytes (one, or a diacritic and a letter) of a character; empty when
// ISO 6937 has no such character.
std::string Iso6937Bytes(char32_t character);

} // namespace captionformats::stl
