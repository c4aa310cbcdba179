#include "webvtt/VttCueWriter.h"

#include "common/ByteScan.h"
#include "common/ClockText.h"
#include "common/SpanTags.h"
#include "webvtt/VttColorClasses.h"
#include "webvtt/VttPlacement.h"

#include <cstring>

namespace captionformats::webvtt {

using namespace zelcaptioning;

namespace {

// Colours are checked against the colour classes separately.
constexpr SpanCapabilities kVttKeeps{.bold = true,
                                     .italic = true,
                                     .underline = true,
                                     .textColor = true,
                                     .textOpacity = true,
                                     .backgroundColor = true};

} // namespace

void VttCueWriter::AppendEscaped(std::string& out, std::string_view text) {
    std::size_t start = 0;
    for (std::size_t at = 0; (at = FindFirstOf<'&', '<', '>'>(text, at)) < text.size(); ++at) {
        out.append(text.substr(start, at - start));
        out += text[at] == '&'   ? std::string_view("&amp;")
               : text[at] == '<' ? std::string_view("&lt;")
                                 : std::string_view("&gt;");
        start = at + 1;
    }
    out.append(text.substr(start));
}

void VttCueWriter::StartCue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                            CaptionType type, std::size_t index) {
    BeginCue(begin, type, index);
    AppendClockMilliseconds(out_, begin, '.');
    out_ += " --> ";
    AppendClockMilliseconds(out_, end, '.');
}

void VttCueWriter::WriteOpenTimingLine(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                                       std::size_t index, std::string_view clockText,
                                       std::string_view settings) {
    constexpr std::size_t kClockLength = 29;
    if (clockText.size() != kClockLength) {
        StartCue(begin, end, kCaptionType_Open, index);
        out_ += settings;
        out_ += '\n';
        return;
    }
    // The times copied with '.' before their milliseconds and, for the usual
    // line without settings, the most frequent by far, appended at once.
    BeginCue(begin, kCaptionType_Open, index);
    char line[kClockLength + 1];
    std::memcpy(line, clockText.data(), kClockLength);
    line[8] = '.';
    line[25] = '.';
    line[kClockLength] = '\n';
    if (settings.empty()) {
        out_.append(line, sizeof line);
        return;
    }
    out_.append(line, kClockLength);
    out_ += settings;
    out_ += '\n';
}

void VttCueWriter::Write(const Caption& caption, std::size_t index) {
    StartCue(caption.GetBeginTime(), caption.GetEndTime(), caption.GetCaptionType(), index);
    out_ += Settings(caption) + '\n';
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
        if (paragraph.GetParagraphTextLength() == 0) {
            Lose("empty line dropped");
            continue;
        }
        for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
            const CaptionTextSpan& span = *paragraph.GetCaptionTextSpan(s);
            AppendSpan(span.StyleAttributes(), zelcore::ToUTF8(span.GetCaptionText()));
        }
        out_ += '\n';
    }
    out_ += '\n';
}

void VttCueWriter::WriteOpenCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                                    const ParagraphStyleAttributes& style,
                                    const CaptionTextBuilder& text, std::size_t lineCount,
                                    std::size_t index) {
    StartCue(begin, end, kCaptionType_Open, index);
    if (lineCount > 0) {
        out_ += OpenCaptionSettings(style);
    }
    out_ += '\n';
    for (std::size_t line = 0; line < lineCount; ++line) {
        const std::span<const CaptionTextBuilder::Run> runs = text.LineRuns(line);
        if (runs.empty()) {
            Lose("empty line dropped");
            continue;
        }
        for (const CaptionTextBuilder::Run& run : runs) {
            AppendSpan(run.attributes, run.utf8);
        }
        out_ += '\n';
    }
    out_ += '\n';
}

std::string VttCueWriter::Settings(const Caption& caption) {
    if (caption.GetNumParagraphs() == 0) {
        return {};
    }
    const CaptionTextParagraph& first = *caption.GetCaptionTextParagraph(0);
    const ParagraphStyleAttributes style = first.GetParagraphStyleAttributes();
    for (std::uint64_t p = 1; p < caption.GetNumParagraphs(); ++p) {
        const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
        if (paragraph.GetParagraphStyleAttributes() != style ||
            (style.GetAnchorID() == kAnchorID_Free &&
             paragraph.GetCaptionPosition() != kPosition_Uninitialized)) {
            Lose("per-line placement dropped (the first line's is used)");
            break;
        }
    }
    return SettingsOf(style, first.GetCaptionPosition());
}

std::string VttCueWriter::SettingsOf(const ParagraphStyleAttributes& style,
                                     const Position& firstLinePosition) {
    std::vector<std::string> approximations;
    std::string settings = SettingsOfPlacement(style, firstLinePosition, approximations);
    for (const std::string& note : approximations) {
        Lose(note);
    }
    return settings;
}

const VttCueWriter::OpenPlacement&
VttCueWriter::OpenPlacementOf(const ParagraphStyleAttributes& style) {
    if (!lastOpenPlacement_ || lastOpenPlacement_->style != style) {
        OpenPlacement placement{style, {}, {}};
        placement.settings = SettingsOfPlacement(style, kPosition_Uninitialized, placement.losses);
        lastOpenPlacement_ = std::move(placement);
    }
    return *lastOpenPlacement_;
}

const std::string& VttCueWriter::OpenCaptionSettings(const ParagraphStyleAttributes& style) {
    const OpenPlacement& placement = OpenPlacementOf(style);
    for (const std::string& note : placement.losses) {
        Lose(note);
    }
    return placement.settings;
}

void VttCueWriter::AppendSpan(const TextSpanAttributes& attributes, std::string_view utf8) {
    // Most spans are plain or only emphasised: no losses to note and no
    // colour classes to write.
    if (OnlyEmphasis(attributes)) {
        AppendInStyleTags(out_, attributes, utf8, AppendEscaped);
        return;
    }
    losses_.NoteSpanLosses(attributes, kVttKeeps, index_, begin_);
    std::string_view text;
    if (attributes.textColor != kCaptioningColor_White) {
        text = ClassOfColor(attributes.textColor);
        if (text.empty()) {
            Lose("text colour other than a WebVTT colour class dropped");
        }
    }
    std::string_view background;
    if (!attributes.backgroundColor.IsTransparent()) {
        background = ClassOfColor(attributes.backgroundColor);
        if (background.empty()) {
            Lose("background colour other than a WebVTT colour class dropped");
        }
    }
    const bool classed = !text.empty() || !background.empty();
    if (classed) {
        out_ += "<c";
        if (!text.empty()) {
            out_ += '.';
            out_ += text;
        }
        if (!background.empty()) {
            out_ += ".bg_";
            out_ += background;
        }
        out_ += '>';
    }
    AppendInStyleTags(out_, attributes, utf8, AppendEscaped);
    if (classed) {
        out_ += "</c>";
    }
}

} // namespace captionformats::webvtt
