#pragma once

#include "zelcore/UTF16String.h"

#include <vector>

namespace TD {

struct TitlerFontFamily {
    zelcore::UTF16String familyName;
    // The family's styles as the font files name them ("Regular", "Bold
    // Italic", ...), regular styles first.
    std::vector<zelcore::UTF16String> styleNames;
};

// The font families installed on the system, in display order
// (case-insensitive by name), without symbol-only and private families.
std::vector<TitlerFontFamily> GetTitlerFontList();

} // namespace TD
