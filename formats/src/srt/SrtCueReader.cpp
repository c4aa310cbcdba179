#include "srt/SrtCueReader.h"

#include "common/ByteScan.h"
#include "common/KeypadAnchor.h"
#include "common/TextInput.h"
#include "srt/SrtCueText.h"
#include "srt/SrtTiming.h"

#include <algorithm>

namespace captionformats::srt {

using namespace zelcaptioning;

namespace {

bool IsDecimalDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsSpaceOrTab(char c) {
    return c == ' ' || c == '\t';
}

// Whether the line holds "-->", the mark of a timing line, good or bad.
bool HasArrow(std::string_view line) {
    for (std::size_t at = 0; (at = FindFirstOf<'-'>(line, at)) + 2 < line.size(); ++at) {
        if (line[at + 1] == '-' && line[at + 2] == '>') {
            return true;
        }
    }
    return false;
}

// A timing starts, after spaces and tabs, with a digit of its begin time: a
// line that does not, as text lines mostly do not, is told without a scan.
bool IsTiming(std::string_view line) {
    std::size_t first = 0;
    while (first < line.size() && IsSpaceOrTab(line[first])) {
        ++first;
    }
    return first < line.size() && IsDecimalDigit(line[first]) && HasArrow(line) &&
           std::holds_alternative<CueTiming>(ParseCueTiming(line));
}

// Where the line after the terminator at `at` starts, as LineCursor cuts
// lines (CR LF, a lone CR or a lone LF); npos when `at` holds no terminator.
std::size_t PastTerminator(std::string_view text, std::size_t at) {
    if (at >= text.size()) {
        return std::string_view::npos;
    }
    if (text[at] == '\n') {
        return at + 1;
    }
    if (text[at] != '\r') {
        return std::string_view::npos;
    }
    return at + 1 < text.size() && text[at + 1] == '\n' ? at + 2 : at + 1;
}

// Where the line from `from` ends (its terminator or the text's end); npos
// when the line holds "-->".
std::size_t LineEndBeforeAnyArrow(std::string_view text, std::size_t from) {
    for (std::size_t at = from;; ++at) {
        at = FindFirstOf<'\n', '\r', '-'>(text, at);
        if (at == text.size() || text[at] != '-') {
            return at;
        }
        if (at + 2 < text.size() && text[at + 1] == '-' && text[at + 2] == '>') {
            return std::string_view::npos;
        }
    }
}

// A line of the text and where it starts: where reading goes on.
struct Place {
    std::size_t offset = 0;
    std::uint64_t number = 1;
};

// The lines of a text one at a time, with the line after the current one in
// view: a cue number is told by the line that follows it. The two lines take
// turns in two places instead of being copied from one to the other.
class LineWindow {
public:
    LineWindow(std::string_view text, Place from)
        : cursor_(text, from.offset, from.number) {
        count_ = cursor_.Next(lines_[0]) ? (cursor_.Next(lines_[1]) ? 2 : 1) : 0;
    }

    bool AtEnd() const { return count_ == 0; }
    const TextLine& Current() const { return lines_[current_]; }
    // The line after the current one, or nullptr at the last line.
    const TextLine* Following() const { return count_ > 1 ? &lines_[current_ ^ 1] : nullptr; }

    void Advance() {
        const int passed = current_;
        current_ ^= 1;
        if (count_ == 2 && cursor_.Next(lines_[passed])) {
            return;
        }
        --count_;
    }

private:
    LineCursor cursor_;
    TextLine lines_[2];
    int current_ = 0;
    int count_ = 0;
};

// Reads cues of the usual shape straight from the bytes, looking at each
// byte about once: a line of digits, a timing line of exactly
// "HH:MM:SS,mmm --> HH:MM:SS,mmm", text lines holding no "-->", and a blank
// line or the end. Everything else is read line by line through a
// LineWindow, which tells cue numbers, timings and text apart in every case;
// both ways read a usual cue alike. A text line of the usual shape ends no
// cue: a timing holds "-->", and a cue number ends the text only when the
// line after it holds "-->".
class SrtParse {
public:
    SrtParse(std::string_view text, DiagnosticLog& log, CueSink& sink)
        : text_(text)
        , log_(log)
        , sink_(sink) {}

    // Returns the number of cues.
    std::size_t Run() {
        Place place;
        while (place.offset < text_.size()) {
            if (!ReadUsualCue(place)) {
                place = ReadLineByLine(place);
            }
        }
        return cues_;
    }

private:
    // Reads the cue at `place` and the blank line after it, and moves `place`
    // past them, when the cue has the usual shape; false, having read
    // nothing, for any other.
    bool ReadUsualCue(Place& place) {
        const std::string_view text = text_;
        std::size_t at = place.offset;
        while (at < text.size() && IsDecimalDigit(text[at])) {
            ++at;
        }
        constexpr std::size_t kTimingLength = 29;
        const std::size_t timingStart =
            at > place.offset ? PastTerminator(text, at) : std::string_view::npos;
        if (timingStart == std::string_view::npos || text.size() - timingStart < kTimingLength) {
            return false;
        }
        const std::size_t timingEnd = timingStart + kTimingLength;
        std::size_t next = timingEnd == text.size() ? timingEnd : PastTerminator(text, timingEnd);
        CueTiming timing;
        if (next == std::string_view::npos ||
            !ReadUsualTiming(text.substr(timingStart, kTimingLength), timing)) {
            return false;
        }
        const std::uint64_t timingLine = place.number + 1;
        std::uint64_t number = timingLine + 1;
        cueLines_.clear();
        while (next < text.size()) {
            std::size_t first = next;
            while (first < text.size() && IsSpaceOrTab(text[first])) {
                ++first;
            }
            if (first == text.size() || text[first] == '\n' || text[first] == '\r') {
                // The blank line that ends the cue.
                next = first == text.size() ? first : PastTerminator(text, first);
                ++number;
                break;
            }
            const std::size_t end = LineEndBeforeAnyArrow(text, first);
            if (end == std::string_view::npos) {
                return false;
            }
            cueLines_.push_back({text.substr(next, end - next), number++});
            next = end == text.size() ? end : PastTerminator(text, end);
        }
        place = {next, number};
        TakeCue(timing, timingLine);
        return true;
    }

    // Reads line by line from `place` up to a line that may start a usual
    // cue; returns where that line is (the text's end when there is none).
    Place ReadLineByLine(Place place) {
        LineWindow lines(text_, place);
        do {
            ReadLine(lines);
        } while (!lines.AtEnd() && !lines.Current().text.empty() &&
                 !IsDecimalDigit(lines.Current().text.front()));
        if (lines.AtEnd()) {
            return {text_.size(), 0};
        }
        const TextLine& line = lines.Current();
        return {static_cast<std::size_t>(line.text.data() - text_.data()), line.number};
    }

    // Reads the current line and whatever it starts.
    void ReadLine(LineWindow& lines) {
        const TextLine& line = lines.Current();
        if (IsBlank(line.text)) {
            lines.Advance();
        } else if (StartsCue(lines)) {
            // The next line, holding "-->", is neither blank nor a cue number.
            lines.Advance();
            ReadCue(lines);
        } else if (HasArrow(line.text)) {
            ReadCue(lines);
        } else {
            log_.Warn(SourceLocation::AtLine(line.number, 1),
                      "line skipped: expected a cue number or a timing line");
            lines.Advance();
        }
    }

    // Whether the current line is a cue number followed by a timing line, good or bad.
    static bool StartsCue(const LineWindow& lines) {
        const TextLine* following = lines.Following();
        return following != nullptr && IsCueNumber(lines.Current().text) &&
               HasArrow(following->text);
    }

    // Whether the current line is one of the cue's text lines.
    static bool InCueText(const LineWindow& lines) {
        const std::string_view text = lines.Current().text;
        return !IsBlank(text) && !StartsCue(lines) && !IsTiming(text);
    }

    // Reads the cue whose timing line is the current one, and moves past its text.
    void ReadCue(LineWindow& lines) {
        const TextLine timingLine = lines.Current();
        const auto timing = ParseCueTiming(timingLine.text);
        lines.Advance();
        if (const auto* error = std::get_if<TimingError>(&timing)) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, error->column),
                      "cue skipped: " + error->message);
            while (!lines.AtEnd() && InCueText(lines)) {
                lines.Advance();
            }
            return;
        }
        cueLines_.clear();
        for (; !lines.AtEnd() && InCueText(lines); lines.Advance()) {
            cueLines_.push_back(lines.Current());
        }
        TakeCue(std::get<CueTiming>(timing), timingLine.number);
    }

    // Hands the cue of `timing`, read from line `timingLine`, with the text
    // lines gathered in cueLines_, to the sink: whole when it takes them, else
    // parsed.
    void TakeCue(const CueTiming& timing, std::uint64_t timingLine) {
        if (timing.end < timing.begin) {
            log_.Warn(SourceLocation::AtLine(timingLine, 1),
                      "cue ends before it begins; kept as found");
        }
        ++cues_;
        if (sink_.CueLines(timing, cueLines_)) {
            return;
        }
        // One builder for every cue keeps its storage; each cue takes all it gathered.
        SrtCueText cueText(builder_, log_);
        for (std::size_t line = 0; line < cueLines_.size(); ++line) {
            if (line > 0) {
                builder_.BreakLine();
            }
            cueText.ParseLine(cueLines_[line].text, cueLines_[line].number);
        }
        ParagraphStyleAttributes style;
        if (const auto keypad = cueText.KeypadPosition()) {
            style.SetAnchorID(AnchorFromKeypad(*keypad));
            style.SetTextAlignment(AlignmentOfColumn(style.GetAnchorID()));
        }
        sink_.Cue(timing.begin, timing.end, style, builder_,
                  cueLines_.empty() ? 0 : builder_.LineCount());
    }

    std::string_view text_;
    DiagnosticLog& log_;
    CueSink& sink_;
    std::size_t cues_ = 0;
    CaptionTextBuilder builder_;
    std::vector<TextLine> cueLines_;
};

} // namespace

std::size_t ReadSrtCues(std::string_view bytes, DiagnosticLog& log, CueSink& sink) {
    const DecodedText input(bytes, TextEncoding::kUtf8OrUtf16);
    const std::size_t cues = SrtParse(input.Text(), log, sink).Run();
    if (cues == 0) {
        // Some line holds more than spaces and tabs.
        if (input.Text().find_first_not_of(" \t\r\n") != std::string_view::npos) {
            log.Fail(SourceLocation::AtLine(1, 1), "no SubRip cue found (no line of the form "
                                                   "\"00:00:01,000 --> 00:00:02,000\")");
        }
    }
    return cues;
}

} // namespace captionformats::srt
