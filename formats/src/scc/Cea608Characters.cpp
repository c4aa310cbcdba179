#include "scc/Cea608Characters.h"

#include <array>

namespace captionformats::cea608 {

namespace {

using detail::kBasicSubstitutions;
using detail::Substitution;

// (0x11, 0x30 + i). 0x39 is the transparent space, decoded as a space.
constexpr std::array<char32_t, 16> kSpecial{
    U'®', U'°', U'½', U'¿', U'™', U'¢', U'£', U'♪', U'à', U' ', U'è', U'â', U'ê', U'î', U'ô', U'û',
};

// (0x12, 0x20 + i): Spanish, French and miscellaneous.
constexpr std::array<char32_t, 32> kExtendedSpanishFrench{
    U'Á', U'É', U'Ó', U'Ú', U'Ü', U'ü', U'‘', U'¡', U'*', U'’', U'—', U'©', U'℠', U'•', U'“', U'”',
    U'À', U'Â', U'Ç', U'È', U'Ê', U'Ë', U'ë', U'Î', U'Ï', U'ï', U'Ô', U'Ù', U'ù', U'Û', U'«', U'»',
};

// (0x13, 0x20 + i): Portuguese, German and Danish.
constexpr std::array<char32_t, 32> kExtendedPortugueseGermanDanish{
    U'Ã', U'ã', U'Í', U'Ì', U'ì', U'Ò', U'ò', U'Õ', U'õ', U'{', U'}', U'\\', U'^', U'_', U'¦', U'~',
    U'Ä', U'ä', U'Ö', U'ö', U'ß', U'¥', U'¤', U'|', U'Å', U'å', U'Ø', U'ø',  U'┌', U'┐', U'└', U'┘',
};

// What a decoder without the extended set shows for an extended character.
std::uint8_t FallbackFor(char32_t character) {
    switch (character) {
    case U'Á':
    case U'À':
    case U'Â':
    case U'Ã':
    case U'Ä':
    case U'Å':
        return 'A';
    case U'É':
    case U'È':
    case U'Ê':
    case U'Ë':
        return 'E';
    case U'Ó':
    case U'Ò':
    case U'Ô':
    case U'Õ':
    case U'Ö':
    case U'Ø':
        return 'O';
    case U'Ú':
    case U'Ù':
    case U'Û':
    case U'Ü':
        return 'U';
    case U'Í':
    case U'Ì':
    case U'Î':
    case U'Ï':
        return 'I';
    case U'ü':
    case U'ù':
        return 'u';
    case U'ë':
        return 'e';
    case U'ï':
    case U'ì':
        return 'i';
    case U'ã':
    case U'ä':
    case U'å':
        return 'a';
    case U'ò':
    case U'õ':
    case U'ö':
    case U'ø':
        return 'o';
    case U'Ç':
        return 'C';
    case U'ß':
        return 's';
    case U'‘':
    case U'’':
        return '\'';
    case U'“':
    case U'”':
    case U'«':
    case U'»':
        return '"';
    case U'—':
    case U'•':
        return '-';
    default:
        return ' ';
    }
}

} // namespace

char32_t SpecialCharacter(std::uint8_t second) {
    return kSpecial[second & 0x0F];
}

char32_t ExtendedCharacter(std::uint8_t first, std::uint8_t second) {
    const auto& table =
        (first & 0x01) != 0 ? kExtendedPortugueseGermanDanish : kExtendedSpanishFrench;
    return table[(second - 0x20) & 0x1F];
}

std::optional<CharacterCode> CodeOfCharacter(char32_t character) {
    if (character >= 0x20 && character < 0x7F) {
        bool substituted = false;
        for (const Substitution& substitution : kBasicSubstitutions) {
            substituted = substituted || substitution.code == character;
        }
        if (!substituted) {
            return CharacterCode{CharacterCode::Kind::kBasic, static_cast<std::uint8_t>(character),
                                 0, 0};
        }
    }
    for (const Substitution& substitution : kBasicSubstitutions) {
        if (substitution.character == character) {
            return CharacterCode{CharacterCode::Kind::kBasic, substitution.code, 0, 0};
        }
    }
    for (std::size_t i = 0; i < kSpecial.size(); ++i) {
        if (kSpecial[i] == character && i != 0x09) {
            return CharacterCode{CharacterCode::Kind::kSpecial, 0x11,
                                 static_cast<std::uint8_t>(0x30 + i), 0};
        }
    }
    for (const auto& [first, table] :
         {std::pair{std::uint8_t{0x12}, &kExtendedSpanishFrench},
          std::pair{std::uint8_t{0x13}, &kExtendedPortugueseGermanDanish}}) {
        for (std::size_t i = 0; i < table->size(); ++i) {
            if ((*table)[i] == character) {
                return CharacterCode{CharacterCode::Kind::kExtended, first,
                                     static_cast<std::uint8_t>(0x20 + i), FallbackFor(character)};
            }
        }
    }
    return std::nullopt;
}

} // namespace captionformats::cea608
