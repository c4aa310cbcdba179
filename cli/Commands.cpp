#include "Commands.h"

#include "FileBytes.h"
#include "JsonWriter.h"

#include "captionformats/DirectConversion.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <ostream>
#include <sstream>

namespace captioncli {

using namespace captionformats;
using namespace zelcaptioning;

namespace {

struct LoadedFile {
    CaptionFileFormat format = CaptionFileFormat::kSrt;
    ReadResult result;
};

std::string ClockText(zelmediatypes::TickTime time) {
    const std::int64_t milliseconds = time.GetTicks() / (zelmediatypes::kTicksPerSecond / 1000);
    char text[32];
    std::snprintf(text, sizeof text, "%02lld:%02lld:%02lld.%03lld",
                  static_cast<long long>(milliseconds / 3600000),
                  static_cast<long long>(milliseconds / 60000 % 60),
                  static_cast<long long>(milliseconds / 1000 % 60),
                  static_cast<long long>(milliseconds % 1000));
    return text;
}

std::string JsonDiagnostics(const std::vector<Diagnostic>& diagnostics) {
    std::string json = "[";
    for (std::size_t i = 0; i < diagnostics.size(); ++i) {
        json += (i ? "," : "") + JsonString(ToString(diagnostics[i]));
    }
    return json + "]";
}

void PrintDiagnostics(std::ostream& err, const std::vector<Diagnostic>& diagnostics,
                      const char* kind) {
    for (const Diagnostic& diagnostic : diagnostics) {
        err << kind << ": " << ToString(diagnostic) << '\n';
    }
}

// A file's bytes and the format they show; a problem is reported to `problem`.
struct FileContent {
    CaptionFileFormat format;
    FileBytes bytes;
};

std::optional<FileContent> ReadContent(const std::string& path, std::string& problem) {
    std::optional<FileBytes> bytes = FileBytes::Open(path);
    if (!bytes) {
        problem = path + ": cannot be opened";
        return std::nullopt;
    }
    const std::optional<CaptionFileFormat> format = DetectFormat(bytes->View(), path);
    if (!format) {
        problem =
            path + ": not a caption file of a format we read (SubRip, WebVTT, SCC, TTML, EBU STL)";
        return std::nullopt;
    }
    return FileContent{*format, std::move(*bytes)};
}

// Reads and recognises a caption file; a problem is reported to `problem`.
std::optional<LoadedFile> Load(const std::string& path, std::string& problem) {
    const std::optional<FileContent> content = ReadContent(path, problem);
    if (!content) {
        return std::nullopt;
    }
    return LoadedFile{content->format,
                      MakeReader(content->format)->Read(content->bytes.View(), {path})};
}

// Converts a file's content: directly where the pair allows it, else through
// the caption model. Writing is skipped when reading failed. A direct
// conversion hands its bytes to `file` as it makes them, where there is one;
// the rest of the bytes are in the conversion's written bytes.
Conversion Convert(const FileContent& content, CaptionFileFormat target, const std::string& path,
                   const WriteOptions& writeOptions, FileReplacement* file) {
    std::function<void(std::string_view)> pieces;
    if (file != nullptr) {
        pieces = [file](std::string_view piece) {
            file->Append(piece);
        };
    }
    if (std::optional<Conversion> direct = ConvertDirectly(
            content.format, target, content.bytes.View(), {path}, writeOptions, pieces)) {
        return std::move(*direct);
    }
    if (file != nullptr) {
        file->Restart(); // what the direct conversion handed on before it gave up
    }
    Conversion conversion;
    conversion.read = MakeReader(content.format)->Read(content.bytes.View(), {path});
    conversion.captionCount = conversion.read.captions.size();
    if (conversion.read.Succeeded()) {
        conversion.written = MakeWriter(target)->Write(conversion.read.captions, writeOptions);
    }
    return conversion;
}

// The usage problem of a frame rate for a format, or empty.
std::string FrameRateProblem(CaptionFileFormat format, double rate, WriteOptions& options) {
    if (format == CaptionFileFormat::kScc) {
        return std::abs(rate - 29.97) < 0.01 ? std::string()
                                             : "SCC runs at 29.97 frames per second";
    }
    if (format == CaptionFileFormat::kEbuStl) {
        if (rate == 25.0 || rate == 30.0) {
            options.framesPerSecond = static_cast<int>(rate);
            return {};
        }
        return "EBU STL runs at 25 or 30 frames per second";
    }
    return "--frame-rate applies to SCC and EBU STL only";
}

} // namespace

std::optional<CaptionFileFormat> FormatOfName(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    if (name == "webvtt") {
        return CaptionFileFormat::kWebVtt;
    }
    return FormatOfFileName("." + name);
}

int RunConvert(const ConvertOptions& options, std::ostream& out, std::ostream& err) {
    const std::optional<CaptionFileFormat> target =
        options.to ? options.to : FormatOfFileName(options.output);
    if (!target) {
        err << "corvala-captions: cannot tell the output format from \"" << options.output
            << "\"; name it with --to (srt, vtt, scc, ttml, stl)\n";
        return kExitUsage;
    }
    WriteOptions writeOptions;
    writeOptions.fileName = options.output;
    writeOptions.dropFrameTimecode = options.dropFrame;
    if (options.frameRate) {
        if (const std::string problem = FrameRateProblem(*target, *options.frameRate, writeOptions);
            !problem.empty()) {
            err << "corvala-captions: " << problem << '\n';
            return kExitUsage;
        }
    }
    std::string problem;
    const std::optional<FileContent> content = ReadContent(options.input, problem);
    // A file at the output is replaced as the bytes come; anything else there
    // (a pipe, a device) takes them whole once the conversion succeeded.
    std::optional<FileReplacement> replacement =
        content ? FileReplacement::Begin(options.output) : std::nullopt;
    const std::optional<Conversion> input =
        content ? std::optional(Convert(*content, *target, options.input, writeOptions,
                                        replacement ? &*replacement : nullptr))
                : std::nullopt;
    const WriteResult none;
    const WriteResult& written = input ? input->written : none;
    bool saved = false;
    if (input && input->read.Succeeded()) {
        if (written.Succeeded()) {
            if (replacement) {
                replacement->Append(written.bytes);
                saved = replacement->Commit();
            } else {
                saved = WriteFileBytes(options.output, written.bytes);
            }
            if (!saved) {
                problem = options.output + ": cannot be written";
            }
        }
    }
    const auto& readWarnings = input ? input->read.warnings : none.warnings;
    const auto& readErrors = input ? input->read.errors : none.errors;
    if (options.json) {
        out << "{\"command\":\"convert\",\"input\":" << JsonString(options.input)
            << ",\"inputFormat\":" << (content ? JsonString(FormatName(content->format)) : "null")
            << ",\"output\":" << JsonString(options.output)
            << ",\"outputFormat\":" << JsonString(FormatName(*target))
            << ",\"written\":" << (saved ? "true" : "false")
            << ",\"captions\":" << (input ? input->captionCount : 0)
            << ",\"readWarnings\":" << JsonDiagnostics(readWarnings)
            << ",\"readErrors\":" << JsonDiagnostics(readErrors)
            << ",\"writeWarnings\":" << JsonDiagnostics(written.warnings)
            << ",\"writeErrors\":" << JsonDiagnostics(written.errors)
            << ",\"problem\":" << (problem.empty() ? "null" : JsonString(problem)) << "}\n";
    } else {
        PrintDiagnostics(err, readWarnings, "warning");
        PrintDiagnostics(err, readErrors, "error");
        PrintDiagnostics(err, written.warnings, "warning");
        PrintDiagnostics(err, written.errors, "error");
        if (!problem.empty()) {
            err << "error: " << problem << '\n';
        }
        if (saved) {
            out << options.input << " (" << FormatName(content->format) << ", "
                << input->captionCount << " captions) -> " << options.output << " ("
                << FormatName(*target) << ")\n";
        }
    }
    return saved ? kExitOk : kExitFileProblem;
}

int RunCheck(const std::string& path, const CheckLimits& limits, bool json, std::ostream& out,
             std::ostream& err) {
    std::string problem;
    const std::optional<LoadedFile> input = Load(path, problem);
    std::vector<Finding> findings;
    CheckLimits effective = limits;
    if (input) {
        effective.cea608 = limits.cea608 || input->result.streamFormat == kStreamFormat_CEA608;
        findings = CheckCaptions(input->result.captions, effective);
    }
    const bool clean = input && input->result.Succeeded() && findings.empty();
    if (json) {
        out << "{\"command\":\"check\",\"file\":" << JsonString(path)
            << ",\"format\":" << (input ? JsonString(FormatName(input->format)) : "null")
            << ",\"cea608\":" << (effective.cea608 ? "true" : "false") << ",\"findings\":[";
        for (std::size_t i = 0; i < findings.size(); ++i) {
            const Finding& finding = findings[i];
            out << (i ? "," : "") << "{\"kind\":" << JsonString(finding.kind) << ",\"caption\":"
                << (finding.captionIndex ? std::to_string(*finding.captionIndex + 1) : "null")
                << ",\"begin\":" << (finding.begin ? JsonString(ClockText(*finding.begin)) : "null")
                << ",\"message\":" << JsonString(finding.message) << "}";
        }
        out << "],\"errors\":"
            << JsonDiagnostics(input ? input->result.errors : std::vector<Diagnostic>())
            << ",\"problem\":" << (problem.empty() ? "null" : JsonString(problem)) << "}\n";
    } else {
        if (!problem.empty()) {
            err << "error: " << problem << '\n';
        }
        if (input) {
            PrintDiagnostics(err, input->result.errors, "error");
        }
        for (const Finding& finding : findings) {
            out << path << ": ";
            if (finding.captionIndex) {
                out << "caption " << *finding.captionIndex + 1 << " at "
                    << ClockText(*finding.begin) << ": ";
            }
            out << finding.kind << ": " << finding.message << '\n';
        }
        if (clean) {
            out << path << ": no problems found\n";
        }
    }
    return clean ? kExitOk : kExitFileProblem;
}

int RunInfo(const std::string& path, bool json, std::ostream& out, std::ostream& err) {
    std::string problem;
    const std::optional<LoadedFile> input = Load(path, problem);
    if (!input || !input->result.Succeeded()) {
        if (json) {
            out << "{\"command\":\"info\",\"file\":" << JsonString(path) << ",\"errors\":"
                << JsonDiagnostics(input ? input->result.errors : std::vector<Diagnostic>())
                << ",\"problem\":" << (problem.empty() ? "null" : JsonString(problem)) << "}\n";
        } else {
            if (!problem.empty()) {
                err << "error: " << problem << '\n';
            }
            if (input) {
                PrintDiagnostics(err, input->result.errors, "error");
            }
        }
        return kExitFileProblem;
    }
    const auto& captions = input->result.captions;
    std::map<std::string, std::size_t> types;
    zelmediatypes::TickTime first = zelmediatypes::kTime_Max;
    zelmediatypes::TickTime last = zelmediatypes::kTime_Min;
    for (const CaptionPtr& caption : captions) {
        std::ostringstream type;
        type << caption->GetCaptionType();
        ++types[type.str()];
        first = std::min(first, caption->GetBeginTime());
        last = std::max(last, caption->GetEndTime());
    }
    std::ostringstream streamFormat;
    streamFormat << input->result.streamFormat;
    if (json) {
        out << "{\"command\":\"info\",\"file\":" << JsonString(path)
            << ",\"format\":" << JsonString(FormatName(input->format))
            << ",\"streamFormat\":" << JsonString(streamFormat.str())
            << ",\"captions\":" << captions.size()
            << ",\"firstBegin\":" << (captions.empty() ? "null" : JsonString(ClockText(first)))
            << ",\"lastEnd\":" << (captions.empty() ? "null" : JsonString(ClockText(last)))
            << ",\"types\":{";
        bool firstType = true;
        for (const auto& [type, count] : types) {
            out << (firstType ? "" : ",") << JsonString(type) << ":" << count;
            firstType = false;
        }
        out << "},\"warnings\":" << JsonDiagnostics(input->result.warnings) << "}\n";
    } else {
        out << path << ": " << FormatName(input->format) << ", " << captions.size() << " captions ("
            << streamFormat.str() << ")\n";
        if (!captions.empty()) {
            out << "  from " << ClockText(first) << " to " << ClockText(last) << '\n';
        }
        for (const auto& [type, count] : types) {
            out << "  " << count << " " << type << '\n';
        }
        out << "  " << input->result.warnings.size() << " warnings\n";
        PrintDiagnostics(err, input->result.warnings, "warning");
    }
    return kExitOk;
}

} // namespace captioncli
