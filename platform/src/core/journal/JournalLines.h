#pragma once

#include <string>
#include <string_view>

namespace platform::core {

inline constexpr int kJournalFormatVersion = 1;
inline constexpr std::string_view kJournalFormatMarker = "corvala-journal";

// One line of the journal: the payload's CRC-32 as eight lowercase hex
// digits, a space, the payload (compact JSON, which holds no line break) and
// a line feed.
std::string JournalLine(std::string_view payload);

// The header line naming the project file the journal's changes start from.
std::string JournalHeaderLine(const std::string& projectDigest);

} // namespace platform::core
