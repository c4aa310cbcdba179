#include "srt/SrtCueWriter.h"

#include "common/ByteScan.h"
#include "common/ClockText.h"
#include "common/CssColor.h"
#include "common/KeypadAnchor.h"
#include "common/SpanTags.h"

#include <charconv>

namespace captionformats::srt {

using namespace zelcaptioning;

namespace {

constexpr SpanCapabilities kSrtKeeps{
    .bold = true, .italic = true, .underline = true, .textColor = true};

// Escapes what the reader would take for markup: '&', '<', '>' and the '{' of
// an override block. Text without them, the usual case, is appended whole.
void AppendEscaped(std::string& out, std::string_view text) {
    std::size_t start = 0;
    for (std::size_t at = 0; (at = FindFirstOf<'&', '<', '>', '{'>(text, at)) < text.size(); ++at) {
        const char c = text[at];
        const char* escape = c == '&'                                       ? "&amp;"
                             : c == '<'                                     ? "&lt;"
                             : c == '>'                                     ? "&gt;"
                             : at + 1 < text.size() && text[at + 1] == '\\' ? "&#123;"
                                                                            : nullptr;
        if (escape != nullptr) {
            out.append(text.substr(start, at - start));
            out += escape;
            start = at + 1;
        }
    }
    out.append(text.substr(start));
}

bool IsBlankText(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

} // namespace

void SrtCueWriter::StartCue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                            CaptionType type, std::size_t index) {
    BeginCue(begin, type, index);
    char number[24];
    const char* const numberEnd = std::to_chars(number, number + sizeof number, index + 1).ptr;
    out_.append(number, static_cast<std::size_t>(numberEnd - number));
    out_ += "\r\n";
    AppendClockMilliseconds(out_, begin, ',');
    out_ += " --> ";
    AppendClockMilliseconds(out_, end, ',');
    out_ += "\r\n";
}

void SrtCueWriter::Write(const Caption& caption, std::size_t index) {
    StartCue(caption.GetBeginTime(), caption.GetEndTime(), caption.GetCaptionType(), index);
    std::string placement;
    if (caption.GetNumParagraphs() > 0) {
        const ParagraphStyleAttributes style =
            caption.GetCaptionTextParagraph(0)->GetParagraphStyleAttributes();
        for (std::uint64_t i = 1; i < caption.GetNumParagraphs(); ++i) {
            if (caption.GetCaptionTextParagraph(i)->GetParagraphStyleAttributes() != style) {
                Lose("per-line placement dropped (the first line's is used)");
                break;
            }
        }
        placement = PlacementTag(style);
    }
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
        if (IsBlankText(zelcore::ToUTF8(paragraph.GetText()))) {
            Lose("empty line dropped");
            continue;
        }
        out_ += placement;
        placement.clear();
        for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
            const CaptionTextSpan& span = *paragraph.GetCaptionTextSpan(s);
            AppendSpan(span.StyleAttributes(), zelcore::ToUTF8(span.GetCaptionText()));
        }
        out_ += "\r\n";
    }
    out_ += "\r\n";
}

void SrtCueWriter::WriteLines(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
                              CaptionType type, const ParagraphStyleAttributes& style,
                              const CaptionTextBuilder& text, std::size_t lineCount,
                              std::size_t index) {
    StartCue(begin, end, type, index);
    std::string placement = lineCount > 0 ? PlacementTag(style) : std::string();
    for (std::size_t line = 0; line < lineCount; ++line) {
        const std::span<const CaptionTextBuilder::Run> runs = text.LineRuns(line);
        bool blank = true;
        for (const CaptionTextBuilder::Run& run : runs) {
            blank = blank && IsBlankText(run.utf8);
        }
        if (blank) {
            Lose("empty line dropped");
            continue;
        }
        out_ += placement;
        placement.clear();
        for (const CaptionTextBuilder::Run& run : runs) {
            AppendSpan(run.attributes, run.utf8);
        }
        out_ += "\r\n";
    }
    out_ += "\r\n";
}

std::string SrtCueWriter::PlacementTag(const ParagraphStyleAttributes& style) {
    if (!IsGridAnchor(style.GetAnchorID())) {
        Lose("free position dropped (written bottom centre)");
        return {};
    }
    if (style.GetTextAlignment() != AlignmentOfColumn(style.GetAnchorID())) {
        Lose("text alignment other than the anchor's side dropped");
    }
    const int keypad = KeypadFromAnchor(style.GetAnchorID());
    return keypad == 2 ? std::string() : "{\\an" + std::to_string(keypad) + "}";
}

void SrtCueWriter::AppendSpan(const TextSpanAttributes& attributes, std::string_view utf8) {
    // Most spans are plain or only emphasised: no losses to note and no colour
    // to write.
    if (OnlyEmphasis(attributes)) {
        AppendInStyleTags(out_, attributes, utf8, AppendEscaped);
        return;
    }
    losses_.NoteSpanLosses(attributes, kSrtKeeps, index_, begin_);
    const bool colored = attributes.textColor != kCaptioningColor_White;
    if (colored) {
        out_ += "<font color=\"" + ToHexRgb(attributes.textColor) + "\">";
    }
    AppendInStyleTags(out_, attributes, utf8, AppendEscaped);
    if (colored) {
        out_ += "</font>";
    }
}

} // namespace captionformats::srt
