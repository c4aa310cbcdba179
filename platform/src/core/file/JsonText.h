#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace platform::core {

// Pieces of JSON text appended to a string, written exactly as QJsonDocument
// writes them, so that streamed text and laid-out QJsonObject text agree.

// A quoted string: '"', '\\' and the control characters escaped (\b \f \n \r
// \t, others as \u00xx), everything else as UTF-8; an unpaired surrogate as
// \uxxxx.
void AppendJsonString(std::u16string_view text, std::string& out);
void AppendJsonString(std::string_view ascii, std::string& out);

// A double in its shortest form that reads back as the same double ("0.85",
// "48", "1e-05"); the value must be finite.
void AppendJsonNumber(double value, std::string& out);
void AppendJsonInteger(std::int64_t value, std::string& out);

} // namespace platform::core
