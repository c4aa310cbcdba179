#include "scc/SccCaptionReader.h"

#include "common/TextInput.h"
#include "scc/SccTimecode.h"

namespace captionformats::scc {

using namespace zelcaptioning;

namespace {

constexpr std::string_view kHeader = "Scenarist_SCC V1.0";

bool IsSpace(char c) {
    return c == ' ' || c == '\t';
}

int HexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// The value of exactly four hex digits.
std::optional<std::uint16_t> HexWord(std::string_view text) {
    if (text.size() != 4) {
        return std::nullopt;
    }
    int value = 0;
    for (const char c : text) {
        const int digit = HexDigit(c);
        if (digit < 0) {
            return std::nullopt;
        }
        value = value << 4 | digit;
    }
    return static_cast<std::uint16_t>(value);
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
    const auto timecode = ParseTimecode(text.substr(0, position));
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

// Counts the captions that end on the file's last frame, as they pass.
class EndCounter final : public cea608::DecodedCaptionSink {
public:
    explicit EndCounter(cea608::DecodedCaptionSink& next)
        : next_(next) {}
    void Caption(std::int64_t beginFrame, std::int64_t endFrame, CaptionType type,
                 const cea608::CaptionMemory& screen) override {
        endFrames.push_back(endFrame);
        next_.Caption(beginFrame, endFrame, type, screen);
    }
    std::vector<std::int64_t> endFrames;

private:
    cea608::DecodedCaptionSink& next_;
};

} // namespace

void ReadSccCaptions(std::string_view bytes, DiagnosticLog& log, cea608::DecodedCaptionSink& sink) {
    const TextInput input(bytes, TextInput::Encoding::kUtf8);
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
            ParseTimecode(lines[index].text.substr(0, lines[index].text.find_first_of(" \t")));
        if (!startsWithTimecode) {
            log.Fail(SourceLocation::AtLine(index < lines.size() ? lines[index].number : 1, 1),
                     "not an SCC file: it must start with \"" + std::string(kHeader) +
                         "\" or a time code line");
            return;
        }
        log.Warn(SourceLocation::AtLine(lines[index].number, 1),
                 "the \"" + std::string(kHeader) + "\" header is missing");
    }
    EndCounter counter(sink);
    cea608::Cea608Decoder decoder(log, counter);
    std::int64_t endFrame = 0;
    for (index += hasHeader ? 1 : 0; index < lines.size(); ++index) {
        if (lines[index].text.find_first_not_of(" \t") != std::string_view::npos) {
            endFrame = FeedLine(lines[index], endFrame, decoder, log);
        }
    }
    decoder.Finish(endFrame);
    for (const std::int64_t captionEnd : counter.endFrames) {
        if (captionEnd == endFrame) {
            log.Warn({}, "the last caption is still shown at the end of the file; it ends with the "
                         "file's last word");
        }
    }
}

} // namespace captionformats::scc
