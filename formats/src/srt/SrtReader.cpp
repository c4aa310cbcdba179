#include "captionformats/SrtReader.h"

#include "common/CaptionTextBuilder.h"
#include "common/KeypadAnchor.h"
#include "common/TextInput.h"
#include "srt/SrtCueText.h"
#include "srt/SrtTiming.h"

#include <algorithm>

namespace captionformats {

using namespace zelcaptioning;

namespace {

bool IsBlank(std::string_view line) {
    return line.find_first_not_of(" \t") == std::string_view::npos;
}

bool IsTiming(std::string_view line) {
    return line.find("-->") != std::string_view::npos &&
           std::holds_alternative<srt::CueTiming>(srt::ParseCueTiming(line));
}

class SrtParse {
public:
    SrtParse(const TextInput& input, DiagnosticLog& log)
        : lines_(input.Lines())
        , log_(log) {}

    std::vector<CaptionPtr> Run() {
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
        return std::move(captions_);
    }

private:
    // A cue number followed by a timing line, good or bad.
    bool StartsCue(std::size_t index) const {
        return srt::IsCueNumber(lines_[index].text) && index + 1 < lines_.size() &&
               lines_[index + 1].text.find("-->") != std::string_view::npos;
    }

    // Reads the cue whose timing line is at `index`; returns the index after it.
    std::size_t ReadCue(std::size_t index) {
        const TextInput::Line& timingLine = lines_[index];
        const auto timing = srt::ParseCueTiming(timingLine.text);
        std::size_t next = index + 1;
        while (next < lines_.size() && !IsBlank(lines_[next].text) && !StartsCue(next) &&
               !IsTiming(lines_[next].text)) {
            ++next;
        }
        if (const auto* error = std::get_if<srt::TimingError>(&timing)) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, error->column),
                      "cue skipped: " + error->message);
            return next;
        }
        const auto& [begin, end] = std::get<srt::CueTiming>(timing);
        if (end < begin) {
            log_.Warn(SourceLocation::AtLine(timingLine.number, 1),
                      "cue ends before it begins; kept as found");
        }
        // One builder for every cue keeps its storage; each cue takes all it gathered.
        CaptionTextBuilder& builder = builder_;
        srt::SrtCueText cueText(builder, log_);
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
        std::vector<CaptionTextParagraphPtr> paragraphs;
        if (next > index + 1) {
            paragraphs = builder.TakeParagraphs(style);
        }
        captions_.push_back(MakeCaption(begin, end, kCaptionType_Open, std::move(paragraphs)));
        return next;
    }

    const std::vector<TextInput::Line>& lines_;
    DiagnosticLog& log_;
    std::vector<CaptionPtr> captions_;
    CaptionTextBuilder builder_;
};

} // namespace

ReadResult SrtReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    const TextInput input(bytes, TextInput::Encoding::kUtf8OrUtf16);
    ReadResult result;
    result.streamFormat = kStreamFormat_OpenCaptions;
    result.captions = SrtParse(input, log).Run();
    if (result.captions.empty() && !input.Lines().empty()) {
        const bool onlyBlank =
            std::all_of(input.Lines().begin(), input.Lines().end(),
                        [](const TextInput::Line& line) { return IsBlank(line.text); });
        if (!onlyBlank) {
            log.Fail(SourceLocation::AtLine(1, 1), "no SubRip cue found (no line of the form "
                                                   "\"00:00:01,000 --> 00:00:02,000\")");
        }
    }
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
