#pragma once

#include "captionformats/WebVttDocument.h"
#include "common/DiagnosticLog.h"
#include "webvtt/VttScanner.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace captionformats::webvtt {

// The W3C "collect a WebVTT timestamp", in milliseconds (saturating).
std::optional<std::int64_t> CollectTimestamp(VttScanner& scanner);

// The W3C "parse a percentage string": digits, an optional fraction, '%', 0 to 100.
std::optional<VttPercentage> ParsePercentage(std::string_view text);

// Where a setting of a cue's timing line was found, for warnings.
struct SettingsLocation {
    DiagnosticLog& log;
    std::uint64_t lineNumber;
};

// The regions a cue may name: the last region defined with each id.
using RegionIds = std::map<std::string, std::size_t, std::less<>>;

struct TimingFailure {
    std::size_t column = 0; // 1-based
    std::string message;
};

// The W3C "collect WebVTT cue timings and settings" from a timing line. Settings
// the algorithm ignores are reported as warnings.
std::optional<TimingFailure> ParseTimingsAndSettings(std::string_view line, VttCue& cue,
                                                     const RegionIds& regions,
                                                     const SettingsLocation& where);

// The W3C "collect WebVTT region settings" from a REGION block's text.
void ParseRegionSettings(std::string_view text, VttRegion& region);

} // namespace captionformats::webvtt
