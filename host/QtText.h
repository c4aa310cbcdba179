#pragma once

#include "zelcore/UTF16String.h"

#include <QString>

#include <string_view>

namespace host {

QString ToQString(const zelcore::UTF16String& text);
zelcore::UTF16String ToUTF16(const QString& text);

// The localised text of a key "$$$/Path/Key=Default text".
QString Localized(std::string_view keyAndDefault);

} // namespace host
