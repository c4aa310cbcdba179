#include "scc/SccCaptionReader.h"

#include "common/TextInput.h"
#include "scc/SccTimecode.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <deque>
#include <string>

namespace captionformats::scc {

using namespace zelcaptioning;

namespace {

constexpr std::string_view kHeader = "Scenarist_SCC V1.0";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::size_t kTimecodeBytes = 11; // HH:MM:SS:FF

bool IsSpace(char c) {
    return c == ' ' || c == '\t';
}

// Each byte's hex digit value, or -1.
constexpr std::array<std::int8_t, 256> kHexDigits = [] {
    std::array<std::int8_t, 256> table{};
    table.fill(-1);
    for (int digit = 0; digit < 10; ++digit) {
        table[static_cast<std::size_t>('0' + digit)] = static_cast<std::int8_t>(digit);
    }
    for (int digit = 0; digit < 6; ++digit) {
        table[static_cast<std::size_t>('a' + digit)] = static_cast<std::int8_t>(10 + digit);
        table[static_cast<std::size_t>('A' + digit)] = static_cast<std::int8_t>(10 + digit);
    }
    return table;
}();

// The value of the two hex digits a 16-bit load of them gives (the first
// digit in the low byte, as x86 and ARM load it), or -1 when one is not a hex
// digit. A file uses few of these entries, which stay in the caches.
constexpr std::array<std::int16_t, 1 << 16> kHexPairs = [] {
    std::array<std::int16_t, 1 << 16> table{};
    for (std::size_t bytes = 0; bytes < table.size(); ++bytes) {
        const int first = kHexDigits[bytes & 0xFF];
        const int second = kHexDigits[bytes >> 8];
        table[bytes] =
            static_cast<std::int16_t>(first < 0 || second < 0 ? -1 : first << 4 | second);
    }
    return table;
}();
static_assert(std::endian::native == std::endian::little);

// The value of the four hex digits at `word`, or a negative number when one
// is not a hex digit (-1 in either half makes the whole negative).
int HexWord(const char* word) {
    std::uint16_t firstTwo = 0;
    std::uint16_t lastTwo = 0;
    std::memcpy(&firstTwo, word, 2);
    std::memcpy(&lastTwo, word + 2, 2);
    return kHexPairs[firstTwo] * 256 | kHexPairs[lastTwo];
}

// Whether TextInput would change the text: NUL and bytes that are not ASCII
// (which SCC's time codes and words never hold) may be decoded as U+FFFD.
bool NeedsDecoding(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return c == '\0' || static_cast<unsigned char>(c) >= 0x80; });
}

// A part of a line as TextInput reads it within the whole file. It starts
// after an ASCII byte, so it decodes alone as it would there; a space put
// before it keeps a byte order mark at its start from being dropped.
std::string Decoded(std::string_view text) {
    if (!NeedsDecoding(text)) {
        return std::string(text);
    }
    // The decoded text may point into the bytes it was given (when they are
    // valid UTF-8), so they must outlive it.
    const std::string padded = " " + std::string(text);
    const DecodedText decoded(padded, TextEncoding::kUtf8);
    return std::string(decoded.Text().substr(1));
}

// Feeds the words of `text`, a line's words from `column` on, the first at
// `frame` and each further one a frame later; returns the frame after the
// last. A line that holds bytes to decode is read as decoded from the first
// word that needs it, columns counted in the decoded text.
std::int64_t FeedWords(std::string_view text, std::uint64_t lineNumber, std::uint64_t column,
                       std::int64_t frame, bool decoded, cea608::Cea608Decoder& decoder,
                       DiagnosticLog& log) {
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* at = begin;
    // The usual words, four hex digits and a space or the line's end, go to
    // the decoder in runs; hex digits are never spaces, so each word of a run
    // takes kWordColumns.
    constexpr std::size_t kRun = 64;
    std::array<std::uint16_t, kRun> pairs;
    while (at != end) {
        const std::uint64_t runColumn = column + static_cast<std::uint64_t>(at - begin) + 1;
        // The words with a byte after them that fit in the run.
        const auto bytesLeft = static_cast<std::size_t>(end - at);
        const std::size_t room = std::min(kRun, bytesLeft > 4 ? (bytesLeft - 5) / 5 + 1 : 0);
        std::size_t count = 0;
        int value = 0;
        for (; count < room && (value = HexWord(at)) >= 0 && IsSpace(at[4]); ++count) {
            pairs[count] = static_cast<std::uint16_t>(value);
            at += cea608::Cea608Decoder::kWordColumns;
        }
        if (count < kRun && end - at == 4 && (value = HexWord(at)) >= 0) {
            pairs[count++] = static_cast<std::uint16_t>(value);
            at = end;
        }
        if (count > 0) {
            decoder.Feed({pairs.data(), count}, frame, lineNumber, runColumn);
            frame += static_cast<std::int64_t>(count);
            continue;
        }
        const std::ptrdiff_t left = end - at;
        if (IsSpace(*at)) {
            ++at;
            continue;
        }
        const SourceLocation where =
            SourceLocation::AtLine(lineNumber, column + static_cast<std::uint64_t>(at - begin) + 1);
        if (const std::string_view rest(at, static_cast<std::size_t>(left));
            !decoded && NeedsDecoding(rest)) {
            return FeedWords(Decoded(rest), lineNumber, where.column - 1, frame, true, decoder,
                             log);
        }
        const char* const start = at;
        while (at != end && !IsSpace(*at)) {
            ++at;
        }
        log.Warn(where, "word \"" + std::string(start, at) + "\" skipped: not four hex digits");
        ++frame;
    }
    return frame;
}

// Feeds one "timecode<tab>words" line to the decoder, its first word at the
// time code and each further one a frame later; returns the frame after its
// last word.
std::int64_t FeedLine(const TextInput::Line& line, std::int64_t previousEnd,
                      cea608::Cea608Decoder& decoder, DiagnosticLog& log) {
    const std::string_view text = line.text;
    // The time code is the line's first field, up to a space or tab. The
    // usual one is eleven bytes with a space or tab after them; if they
    // parse, they hold neither, so the field ends right there.
    std::size_t position = kTimecodeBytes;
    std::optional<ParsedTimecode> timecode;
    if (text.size() <= position || !IsSpace(text[position]) ||
        !(timecode = ParseTimecode(text.substr(0, position)))) {
        position = 0;
        while (position < text.size() && !IsSpace(text[position])) {
            ++position;
        }
        timecode = ParseTimecode(text.substr(0, position));
    }
    if (!timecode) {
        log.Warn(SourceLocation::AtLine(line.number, 1),
                 "line skipped: \"" + Decoded(text.substr(0, position)) +
                     "\" is no time code (HH:MM:SS:FF or HH:MM:SS;FF)");
        return previousEnd;
    }
    if (timecode->frame < previousEnd) {
        log.Warn(SourceLocation::AtLine(line.number, 1),
                 "time code falls on the previous line's last words (kept as written)");
    }
    return FeedWords(text.substr(position), line.number, position, timecode->frame, false, decoder,
                     log);
}

// Keeps the end frames of the captions as they pass, to count those that end
// on the file's last frame once it is known. A deque grows without copying
// what it holds or asking the system for one large block.
class EndCounter final : public cea608::DecodedCaptionSink {
public:
    explicit EndCounter(cea608::DecodedCaptionSink& next)
        : next_(next) {}
    void Caption(std::int64_t beginFrame, std::int64_t endFrame, CaptionType type,
                 const cea608::CaptionMemory& screen) override {
        endFrames.push_back(endFrame);
        next_.Caption(beginFrame, endFrame, type, screen);
    }
    std::deque<std::int64_t> endFrames;

private:
    cea608::DecodedCaptionSink& next_;
};

} // namespace

void ReadSccCaptions(std::string_view bytes, DiagnosticLog& log, cea608::DecodedCaptionSink& sink) {
    if (bytes.starts_with(kByteOrderMark)) {
        bytes.remove_prefix(kByteOrderMark.size());
    }
    // SCC is ASCII: its lines are read where they lie, and a line that is not
    // is decoded where it matters (FeedWords).
    LineCursor lines(bytes);
    TextLine first;
    bool any = lines.Next(first);
    while (any && IsBlank(first.text)) {
        any = lines.Next(first);
    }
    const bool hasHeader = any && first.text.starts_with(kHeader);
    if (!hasHeader) {
        const bool startsWithTimecode =
            any && ParseTimecode(first.text.substr(0, first.text.find_first_of(" \t")));
        if (!startsWithTimecode) {
            log.Fail(SourceLocation::AtLine(any ? first.number : 1, 1),
                     "not an SCC file: it must start with \"" + std::string(kHeader) +
                         "\" or a time code line");
            return;
        }
        log.Warn(SourceLocation::AtLine(first.number, 1),
                 "the \"" + std::string(kHeader) + "\" header is missing");
    }
    EndCounter counter(sink);
    cea608::Cea608Decoder decoder(log, counter);
    std::int64_t endFrame = 0;
    TextLine line = first;
    for (bool more = !hasHeader || lines.Next(line); more; more = lines.Next(line)) {
        if (!IsBlank(line.text)) {
            endFrame = FeedLine(line, endFrame, decoder, log);
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
