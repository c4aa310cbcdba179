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

// Only spaces and tabs; compared in place, as the library's search looks up
// each byte in the set of two.
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
    while (first < line.size() && (line[first] == ' ' || line[first] == '\t')) {
        ++first;
    }
    return first < line.size() && line[first] >= '0' && line[first] <= '9' && HasArrow(line) &&
           std::holds_alternative<CueTiming>(ParseCueTiming(line));
}

// The lines of a text one at a time, with the line after the current one in
// view: a cue number is told by the line that follows it. The two lines take
// turns in two places instead of being copied from one to the other.
class LineWindow {
public:
    explicit LineWindow(std::string_view text)
        : cursor_(text) {
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

class SrtParse {
public:
    SrtParse(std::string_view text, DiagnosticLog& log, CueSink& sink)
        : lines_(text)
        , log_(log)
        , sink_(sink) {}

    // Returns the number of cues.
    std::size_t Run() {
        while (!lines_.AtEnd()) {
            const TextLine& line = lines_.Current();
            if (IsBlank(line.text)) {
                lines_.Advance();
            } else if (StartsCue()) {
                // The next line, holding "-->", is neither blank nor a cue number.
                lines_.Advance();
                ReadCue();
            } else if (HasArrow(line.text)) {
                ReadCue();
            } else {
                log_.Warn(SourceLocation::AtLine(line.number, 1),
                          "line skipped: expected a cue number or a timing line");
                lines_.Advance();
            }
        }
        return cues_;
    }

private:
    // Whether the current line is a cue number followed by a timing line, good or bad.
    bool StartsCue() const {
        const TextLine* following = lines_.Following();
        return following != nullptr && IsCueNumber(lines_.Current().text) &&
               HasArrow(following->text);
    }

    // Whether the current line is one of the cue's text lines.
    bool InCueText() const {
        const std::string_view text = lines_.Current().text;
        return !IsBlank(text) && !StartsCue() && !IsTiming(text);
    }

    // Reads the cue whose timing line is the current one, and moves past its text.
    void ReadCue() {
        const TextLine timingLine = lines_.Current();
        const auto timing = ParseCueTiming(timingLine.text);
        lines_.Advance();
        if (const auto* error = std::get_if<TimingError>(&timing)) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, error->column),
                      "cue skipped: " + error->message);
            while (!lines_.AtEnd() && InCueText()) {
                lines_.Advance();
            }
            return;
        }
        const CueTiming& cueTiming = std::get<CueTiming>(timing);
        const zelmediatypes::TickTime begin = cueTiming.begin;
        const zelmediatypes::TickTime end = cueTiming.end;
        if (end < begin) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, 1),
                      "cue ends before it begins; kept as found");
        }
        // The cue's lines are kept for the sink to take whole or for parsing.
        cueLines_.clear();
        for (; !lines_.AtEnd() && InCueText(); lines_.Advance()) {
            cueLines_.push_back(lines_.Current());
        }
        ++cues_;
        if (sink_.CueLines(cueTiming, cueLines_)) {
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
        sink_.Cue(begin, end, style, builder_, cueLines_.empty() ? 0 : builder_.LineCount());
    }

    LineWindow lines_;
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
