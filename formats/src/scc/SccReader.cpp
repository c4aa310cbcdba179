#include "captionformats/SccReader.h"

#include "common/CaptionTextBuilder.h"
#include "common/TextInput.h"
#include "scc/Cea608Decoder.h"
#include "scc/SccTimecode.h"

#include <charconv>

namespace captionformats {

using namespace zelcaptioning;

namespace {

constexpr std::string_view kHeader = "Scenarist_SCC V1.0";

bool IsSpace(char c) {
    return c == ' ' || c == '\t';
}

std::optional<std::uint16_t> HexWord(std::string_view text) {
    std::uint16_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (text.size() != 4 || error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

// Feeds one "timecode<tab>words" line to the decoder, its first word at the
// time code and each further one a frame later; returns the frame after its
// last word.
std::int64_t FeedLine(const TextInput::Line& line, std::int64_t previousEnd,
                      cea608::Cea608Decoder& decoder, DiagnosticLog& log) {
    const std::string_view text = line.text;
    std::size_t position = 0;
    while (position < text.size() && !IsSpace(text[position])) {
        ++position;
    }
    const auto timecode = scc::ParseTimecode(text.substr(0, position));
    if (!timecode) {
        log.Warn(SourceLocation::AtLine(line.number, 1),
                 "line skipped: \"" + std::string(text.substr(0, position)) +
                     "\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)");
        return previousEnd;
    }
    if (timecode->frame < previousEnd) {
        log.Warn(SourceLocation::AtLine(line.number, 1),
                 "time code falls on the previous line's last words (kept as written)");
    }
    std::int64_t frame = timecode->frame;
    while (position < text.size()) {
        while (position < text.size() && IsSpace(text[position])) {
            ++position;
        }
        const std::size_t start = position;
        while (position < text.size() && !IsSpace(text[position])) {
            ++position;
        }
        if (start == position) {
            break;
        }
        const std::string_view word = text.substr(start, position - start);
        const SourceLocation where = SourceLocation::AtLine(line.number, start + 1);
        if (const auto value = HexWord(word)) {
            decoder.Feed(static_cast<std::uint8_t>(*value >> 8),
                         static_cast<std::uint8_t>(*value & 0xFF), frame, where);
        } else {
            log.Warn(where, "word \"" + std::string(word) + "\" skipped: not four hex digits");
        }
        ++frame;
    }
    return frame;
}

} // namespace

ReadResult SccReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    const TextInput input(bytes, TextInput::Encoding::kUtf8);
    ReadResult result;
    result.streamFormat = kStreamFormat_CEA608;
    const auto& lines = input.Lines();
    std::size_t index = 0;
    while (index < lines.size() &&
           lines[index].text.find_first_not_of(" \t") == std::string_view::npos) {
        ++index;
    }
    const bool hasHeader = index < lines.size() && lines[index].text.starts_with(kHeader);
    if (!hasHeader) {
        const bool startsWithTimecode =
            index < lines.size() &&
            scc::ParseTimecode(lines[index].text.substr(0, lines[index].text.find_first_of(" \t")));
        if (!startsWithTimecode) {
            log.Fail(SourceLocation::AtLine(index < lines.size() ? lines[index].number : 1, 1),
                     "not an SCC file: it must start with \"" + std::string(kHeader) +
                         "\" or a time code line");
            log.TakeInto(result);
            return result;
        }
        log.Warn(SourceLocation::AtLine(lines[index].number, 1),
                 "the \"" + std::string(kHeader) + "\" header is missing");
    }
    cea608::Cea608Decoder decoder(log);
    std::int64_t endFrame = 0;
    for (index += hasHeader ? 1 : 0; index < lines.size(); ++index) {
        if (lines[index].text.find_first_not_of(" \t") != std::string_view::npos) {
            endFrame = FeedLine(lines[index], endFrame, decoder, log);
        }
    }
    for (cea608::DecodedCaption& decoded : decoder.Finish(endFrame)) {
        if (decoded.endFrame == endFrame) {
            log.Warn({}, "the last caption is still shown at the end of the file; it ends with the "
                         "file's last word");
        }
        result.captions.push_back(MakeCaption(scc::TimeOfFrame(decoded.beginFrame),
                                              scc::TimeOfFrame(decoded.endFrame), decoded.type,
                                              std::move(decoded.paragraphs)));
    }
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
