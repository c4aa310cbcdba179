#include "srt/SrtCueReader.h"

#include "common/KeypadAnchor.h"
#include "common/TextInput.h"
#include "srt/SrtCueText.h"
#include "srt/SrtTiming.h"

#include <algorithm>

namespace captionformats::srt {

using namespace zelcaptioning;

namespace {

bool IsBlank(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

bool IsTiming(std::string_view line) {
    return line.find("-->") != std::string_view::npos &&
           std::holds_alternative<CueTiming>(ParseCueTiming(line));
}

class SrtParse {
public:
    SrtParse(const TextInput& input, DiagnosticLog& log, CueSink& sink)
        : lines_(input.Lines())
        , log_(log)
        , sink_(sink) {}

    // Returns the number of cues.
    std::size_t Run() {
        std::size_t index = 0;
        while (index < lines_.size()) {
            const TextInput::Line& line = lines_[index];
            if (IsBlank(line.text) || StartsCue(index)) {
                ++index;
            } else if (line.text.find("-->") != std::string_view::npos) {
                index = ReadCue(index);
            } else {
                log_.Warn(SourceLocation::AtLine(line.number, 1),
                          "line skipped: expected a cue number or a timing line");
                ++index;
            }
        }
        return cues_;
    }

private:
    // A cue number followed by a timing line, good or bad.
    bool StartsCue(std::size_t index) const {
        return IsCueNumber(lines_[index].text) && index + 1 < lines_.size() &&
               lines_[index + 1].text.find("-->") != std::string_view::npos;
    }

    // Reads the cue whose timing line is at `index`; returns the index after it.
    std::size_t ReadCue(std::size_t index) {
        const TextInput::Line& timingLine = lines_[index];
        const auto timing = ParseCueTiming(timingLine.text);
        std::size_t next = index + 1;
        while (next < lines_.size() && !IsBlank(lines_[next].text) && !StartsCue(next) &&
               !IsTiming(lines_[next].text)) {
            ++next;
        }
        if (const auto* error = std::get_if<TimingError>(&timing)) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, error->column),
                      "cue skipped: " + error->message);
            return next;
        }
        const auto& [begin, end] = std::get<CueTiming>(timing);
        if (end < begin) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, 1),
                      "cue ends before it begins; kept as found");
        }
        // One builder for every cue keeps its storage; each cue takes all it gathered.
        CaptionTextBuilder& builder = builder_;
        SrtCueText cueText(builder, log_);
        for (std::size_t textIndex = index + 1; textIndex < next; ++textIndex) {
            if (textIndex > index + 1) {
                builder.BreakLine();
            }
            cueText.ParseLine(lines_[textIndex].text, lines_[textIndex].number);
        }
        ParagraphStyleAttributes style;
        if (const auto keypad = cueText.KeypadPosition()) {
            style.SetAnchorID(AnchorFromKeypad(*keypad));
            style.SetTextAlignment(AlignmentOfColumn(style.GetAnchorID()));
        }
        sink_.Cue(begin, end, style, builder, next > index + 1 ? builder.LineCount() : 0);
        ++cues_;
        return next;
    }

    const std::vector<TextInput::Line>& lines_;
    DiagnosticLog& log_;
    CueSink& sink_;
    std::size_t cues_ = 0;
    CaptionTextBuilder builder_;
};

} // namespace

std::size_t ReadSrtCues(std::string_view bytes, DiagnosticLog& log, CueSink& sink) {
    const TextInput input(bytes, TextInput::Encoding::kUtf8OrUtf16);
    const std::size_t cues = SrtParse(input, log, sink).Run();
    if (cues == 0 && !input.Lines().empty()) {
        const bool onlyBlank =
            std::all_of(input.Lines().begin(), input.Lines().end(),
                        [](const TextInput::Line& line) { return IsBlank(line.text); });
        if (!onlyBlank) {
            log.Fail(SourceLocation::AtLine(1, 1), "no SubRip cue found (no line of the form "
                                                   "\"00:00:01,000 --> 00:00:02,000\")");
        }
    }
    return cues;
}

} // namespace captionformats::srt
