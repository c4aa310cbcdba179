#pragma once

#include "CaptionChecks.h"
#include "captionformats/CaptionFileFormat.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace captioncli {

// Exit codes of corvala-captions.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFileProblem = 1;
inline constexpr int kExitUsage = 2;

struct ConvertOptions {
    std::string input;
    std::string output;
    std::optional<captionformats::CaptionFileFormat> to; // else from the output's extension
    std::optional<double> frameRate;
    bool dropFrame = false;
    bool json = false;
};

// Each command writes its report to `out` (text, or one JSON object with
// `json`), and problems to `err` in text mode; it returns an exit code.
int RunConvert(const ConvertOptions& options, std::ostream& out, std::ostream& err);
int RunCheck(const std::string& file, const CheckLimits& limits, bool json, std::ostream& out,
             std::ostream& err);
int RunInfo(const std::string& file, bool json, std::ostream& out, std::ostream& err);

// The format a --to value names: srt, vtt (or webvtt), scc, ttml (or dfxp), stl.
std::optional<captionformats::CaptionFileFormat> FormatOfName(std::string name);

} // namespace captioncli
