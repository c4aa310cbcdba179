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

// Reads words of four hex digits each followed by a space or tab from `at`
// into `pairs`, at most `room` of them, moving `at` past them; returns how
// many it read. The caller makes sure that `room` words of five bytes lie
// before the end of the text. In line in both callers: it is their loop.
[[gnu::always_inline]] inline std::size_t ReadSpacedWords(const char*& at, std::uint16_t* pairs,
                                                          std::size_t room) {
    std::size_t count = 0;
    int value = 0;
    for (; count < room && (value = HexWord(at)) >= 0 && IsSpace(at[4]); ++count) {
        pairs[count] = static_cast<std::uint16_t>(value);
        at += cea608::Cea608Decoder::kWordColumns;
    }
    return count;
}

// How many words of five bytes, the last maybe without its space, fit in
// `bytesLeft`.
std::size_t SpacedWordsIn(std::ptrdiff_t bytesLeft) {
    return bytesLeft > 4 ? static_cast<std::size_t>(bytesLeft - 5) / 5 + 1 : 0;
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
        std::size_t count =
            ReadSpacedWords(at, pairs.data(), std::min(kRun, SpacedWordsIn(end - at)));
        int value = 0;
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

// A line whose time code falls before `previousEnd`, the frame after the
// previous line's last word, is read as written, with a warning.
void WarnIfOverlapping(std::int64_t frame, std::int64_t previousEnd, std::uint64_t lineNumber,
                       DiagnosticLog& log) {
    if (frame < previousEnd) {
        log.Warn(SourceLocation::AtLine(lineNumber, 1),
                 "time code falls on the previous line's last words (kept as written)");
    }
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
    WarnIfOverlapping(timecode->frame, previousEnd, line.number, log);
    return FeedWords(text.substr(position), line.number, position, timecode->frame, false, decoder,
                     log);
}

// The bytes of the line break at `at` of `bytes` as LineCursor takes them:
// 2 for CR LF, 1 for a lone CR or LF, 0 for none (or the end).
std::size_t LineBreakBytes(std::string_view bytes, std::size_t at) {
    if (at >= bytes.size() || (bytes[at] != '\n' && bytes[at] != '\r')) {
        return 0;
    }
    return bytes[at] == '\r' && at + 1 < bytes.size() && bytes[at + 1] == '\n' ? 2 : 1;
}

// Feeds the line that starts at `start` of `bytes`, numbered `lineNumber`,
// when it has the usual shape: an eleven-byte time code, a space or tab, and
// words of four hex digits each followed by a space or tab, the last by the
// line's end. Its words are read as the line is cut, each byte looked at
// once; the frame after its last word becomes `endFrame`. Returns where the
// next line starts, or nothing, having fed nothing, for a line of any other
// shape (or of very many words), which FeedLine reads once it is cut.
std::optional<std::size_t> FeedUsualLine(std::string_view bytes, std::size_t start,
                                         std::uint64_t lineNumber, std::int64_t& endFrame,
                                         cea608::Cea608Decoder& decoder, DiagnosticLog& log) {
    const char* at = bytes.data() + start;
    const char* const end = bytes.data() + bytes.size();
    if (end - at < static_cast<std::ptrdiff_t>(kTimecodeBytes + 5) ||
        !IsSpace(at[kTimecodeBytes])) {
        return std::nullopt;
    }
    const std::optional<ParsedTimecode> timecode = ParseTimecode({at, kTimecodeBytes});
    if (!timecode) {
        return std::nullopt;
    }
    at += kTimecodeBytes + 1;
    constexpr std::size_t kMostWords = 256;
    std::array<std::uint16_t, kMostWords> pairs;
    std::size_t count =
        ReadSpacedWords(at, pairs.data(), std::min(kMostWords - 1, SpacedWordsIn(end - at)));
    // The last word, ended by the line's end. A line break stops the words,
    // so none lies inside the line.
    int value = 0;
    if (end - at < 4 || (value = HexWord(at)) < 0) {
        return std::nullopt;
    }
    const auto lineEnd = static_cast<std::size_t>(at + 4 - bytes.data());
    const std::size_t lineBreak = LineBreakBytes(bytes, lineEnd);
    if (lineBreak == 0 && lineEnd != bytes.size()) {
        return std::nullopt;
    }
    pairs[count++] = static_cast<std::uint16_t>(value);
    WarnIfOverlapping(timecode->frame, endFrame, lineNumber, log);
    decoder.Feed({pairs.data(), count}, timecode->frame, lineNumber, kTimecodeBytes + 2);
    endFrame = timecode->frame + static_cast<std::int64_t>(count);
    return lineEnd + lineBreak;
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
    // From the line after the header, or from the first line.
    std::size_t next =
        hasHeader ? lines.Offset() : static_cast<std::size_t>(first.text.data() - bytes.data());
    for (std::uint64_t number = hasHeader ? first.number + 1 : first.number; next < bytes.size();
         ++number) {
        if (const std::size_t lineBreak = LineBreakBytes(bytes, next)) {
            next += lineBreak; // an empty line
            continue;
        }
        if (const std::optional<std::size_t> after =
                FeedUsualLine(bytes, next, number, endFrame, decoder, log)) {
            next = *after;
            continue;
        }
        LineCursor cursor(bytes, next, number);
        TextLine line;
        cursor.Next(line);
        if (!IsBlank(line.text)) {
            endFrame = FeedLine(line, endFrame, decoder, log);
        }
        next = cursor.Offset();
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
