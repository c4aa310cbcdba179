#pragma once

#include "zelcore/UTF16String.h"

#include <map>
#include <string_view>

namespace zelcore {

// User-visible texts are written as localisation keys, "$$$/Path/Key=Default text".
// Localize returns the translation of the key's path from the installed table,
// or the default text after the first '=' when the table has none. A text that
// is not a key is returned unchanged.
UTF16String Localize(std::string_view keyAndDefault);
UTF16String Localize(std::u16string_view keyAndDefault);

// The key's path ("$$$/Path/Key"), or an empty view when the text is not a key.
std::string_view LocalizationKeyPath(std::string_view keyAndDefault);

// Translations by key path. Installing replaces the whole table; an empty table
// restores the default texts.
using TranslationTable = std::map<std::string, UTF16String, std::less<>>;
void InstallTranslationTable(TranslationTable table);

} // namespace zelcore
