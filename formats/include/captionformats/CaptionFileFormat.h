#pragma once

#include "captionformats/CaptionReader.h"
#include "captionformats/CaptionWriter.h"

#include <memory>
#include <optional>
#include <string_view>

namespace captionformats {

enum class CaptionFileFormat { kSrt, kWebVtt, kScc, kTtml, kEbuStl };

inline constexpr CaptionFileFormat kAllCaptionFileFormats[] = {
    CaptionFileFormat::kSrt, CaptionFileFormat::kWebVtt, CaptionFileFormat::kScc,
    CaptionFileFormat::kTtml, CaptionFileFormat::kEbuStl};

// "SubRip", "WebVTT", "SCC", "TTML", "EBU STL".
std::string_view FormatName(CaptionFileFormat format);
// The usual file name extension, without the dot: srt, vtt, scc, ttml, stl.
std::string_view FormatExtension(CaptionFileFormat format);
// The format a file name's extension names (case-insensitive; dfxp and xml
// name TTML), or nothing.
std::optional<CaptionFileFormat> FormatOfFileName(std::string_view fileName);

// The format the content shows: EBU STL by its GSI disk format code, WebVTT by
// its signature, SCC by its header or a first line of time code and hex words,
// TTML by a root <tt> element, SubRip by a timing line among its first lines.
// The file name's extension decides only when the content shows none of them;
// nothing when neither does.
std::optional<CaptionFileFormat> DetectFormat(std::string_view bytes, std::string_view fileName);

std::unique_ptr<CaptionReader> MakeReader(CaptionFileFormat format);
std::unique_ptr<CaptionWriter> MakeWriter(CaptionFileFormat format);

} // namespace captionformats
