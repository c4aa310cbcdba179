#include "captionformats/CaptionFileFormat.h"

#include "captionformats/EbuStlReader.h"
#include "captionformats/EbuStlWriter.h"
#include "captionformats/SccReader.h"
#include "captionformats/SccWriter.h"
#include "captionformats/SrtReader.h"
#include "captionformats/SrtWriter.h"
#include "captionformats/TtmlReader.h"
#include "captionformats/TtmlWriter.h"
#include "captionformats/WebVttReader.h"
#include "captionformats/WebVttWriter.h"
#include "common/TextInput.h"
#include "scc/SccTimecode.h"
#include "srt/SrtTiming.h"

#include <algorithm>
#include <cctype>

namespace captionformats {

namespace {

// Enough of a text file to recognise it.
constexpr std::size_t kSniffBytes = 4096;
constexpr std::size_t kSniffLines = 20;

bool LooksLikeSccLine(std::string_view line) {
    const std::size_t tab = line.find_first_of(" \t");
    if (tab == std::string_view::npos || !scc::ParseTimecode(line.substr(0, tab))) {
        return false;
    }
    const std::string_view words = line.substr(tab + 1);
    const std::size_t firstWord = words.find_first_not_of(" \t");
    return firstWord != std::string_view::npos && words.size() >= firstWord + 4 &&
           std::all_of(words.begin() + static_cast<std::ptrdiff_t>(firstWord),
                       words.begin() + static_cast<std::ptrdiff_t>(firstWord + 4),
                       [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; });
}

// The local name of the first element, skipping the XML declaration,
// processing instructions, comments and a document type.
std::string_view RootElementName(std::string_view text) {
    std::size_t position = 0;
    while ((position = text.find('<', position)) != std::string_view::npos) {
        const std::string_view rest = text.substr(position + 1);
        if (rest.starts_with('?') || rest.starts_with('!')) {
            const std::string_view end = rest.starts_with("!--") ? "-->" : ">";
            const std::size_t close = text.find(end, position + 1);
            if (close == std::string_view::npos) {
                return {};
            }
            position = close + end.size();
            continue;
        }
        const std::size_t nameEnd = std::min(rest.find_first_of(" \t\r\n/>"), rest.size());
        const std::string_view name = rest.substr(0, nameEnd);
        const std::size_t colon = name.find(':');
        return colon == std::string_view::npos ? name : name.substr(colon + 1);
    }
    return {};
}

} // namespace

std::string_view FormatName(CaptionFileFormat format) {
    switch (format) {
    case CaptionFileFormat::kSrt:
        return "SubRip";
    case CaptionFileFormat::kWebVtt:
        return "WebVTT";
    case CaptionFileFormat::kScc:
        return "SCC";
    case CaptionFileFormat::kTtml:
        return "TTML";
    case CaptionFileFormat::kEbuStl:
        return "EBU STL";
    }
    return {};
}

std::string_view FormatExtension(CaptionFileFormat format) {
    switch (format) {
    case CaptionFileFormat::kSrt:
        return "srt";
    case CaptionFileFormat::kWebVtt:
        return "vtt";
    case CaptionFileFormat::kScc:
        return "scc";
    case CaptionFileFormat::kTtml:
        return "ttml";
    case CaptionFileFormat::kEbuStl:
        return "stl";
    }
    return {};
}

std::optional<CaptionFileFormat> FormatOfFileName(std::string_view fileName) {
    const std::size_t dot = fileName.rfind('.');
    if (dot == std::string_view::npos) {
        return std::nullopt;
    }
    std::string extension(fileName.substr(dot + 1));
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (extension == "dfxp" || extension == "xml") {
        return CaptionFileFormat::kTtml;
    }
    for (CaptionFileFormat format : kAllCaptionFileFormats) {
        if (FormatExtension(format) == extension) {
            return format;
        }
    }
    return std::nullopt;
}

std::optional<CaptionFileFormat> DetectFormat(std::string_view bytes, std::string_view fileName) {
    if (bytes.size() >= 1024 &&
        (bytes.substr(3, 8) == "STL25.01" || bytes.substr(3, 8) == "STL30.01")) {
        return CaptionFileFormat::kEbuStl;
    }
    const TextInput text(bytes.substr(0, kSniffBytes), TextInput::Encoding::kUtf8OrUtf16);
    std::vector<std::string_view> lines;
    for (const TextInput::Line& line : text.Lines()) {
        if (line.text.find_first_not_of(" \t") != std::string_view::npos &&
            lines.size() < kSniffLines) {
            lines.push_back(line.text);
        }
    }
    if (!lines.empty()) {
        if (lines.front().starts_with("WEBVTT")) {
            return CaptionFileFormat::kWebVtt;
        }
        if (lines.front().starts_with("Scenarist_SCC") || LooksLikeSccLine(lines.front())) {
            return CaptionFileFormat::kScc;
        }
    }
    if (RootElementName(text.Text()) == "tt") {
        return CaptionFileFormat::kTtml;
    }
    for (std::string_view line : lines) {
        if (line.find("-->") != std::string_view::npos &&
            std::holds_alternative<srt::CueTiming>(srt::ParseCueTiming(line))) {
            return CaptionFileFormat::kSrt;
        }
    }
    return FormatOfFileName(fileName);
}

std::unique_ptr<CaptionReader> MakeReader(CaptionFileFormat format) {
    switch (format) {
    case CaptionFileFormat::kSrt:
        return std::make_unique<SrtReader>();
    case CaptionFileFormat::kWebVtt:
        return std::make_unique<WebVttReader>();
    case CaptionFileFormat::kScc:
        return std::make_unique<SccReader>();
    case CaptionFileFormat::kTtml:
        return std::make_unique<TtmlReader>();
    case CaptionFileFormat::kEbuStl:
        return std::make_unique<EbuStlReader>();
    }
    return nullptr;
}

std::unique_ptr<CaptionWriter> MakeWriter(CaptionFileFormat format) {
    switch (format) {
    case CaptionFileFormat::kSrt:
        return std::make_unique<SrtWriter>();
    case CaptionFileFormat::kWebVtt:
        return std::make_unique<WebVttWriter>();
    case CaptionFileFormat::kScc:
        return std::make_unique<SccWriter>();
    case CaptionFileFormat::kTtml:
        return std::make_unique<TtmlWriter>();
    case CaptionFileFormat::kEbuStl:
        return std::make_unique<EbuStlWriter>();
    }
    return nullptr;
}

} // namespace captionformats
