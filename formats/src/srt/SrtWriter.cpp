#include "captionformats/SrtWriter.h"

#include "common/CaptionOrder.h"
#include "common/ClockText.h"
#include "common/CssColor.h"
#include "common/KeypadAnchor.h"
#include "common/LossReport.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

constexpr SpanCapabilities kSrtKeeps{
    .bold = true, .italic = true, .underline = true, .textColor = true};

// Escapes what the reader would take for markup: '&', '<', '>' and the '{' of
// an override block.
void AppendEscaped(std::string& out, std::string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        switch (text[i]) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '{':
            out += (i + 1 < text.size() && text[i + 1] == '\\') ? "&#123;" : "{";
            break;
        default:
            out += text[i];
        }
    }
}

void AppendSpan(std::string& out, const CaptionTextSpan& span) {
    const TextSpanAttributes& attributes = span.StyleAttributes();
    const bool colored = attributes.textColor != TextSpanAttributes().textColor;
    std::string closing;
    if (colored) {
        out += "<font color=\"" + ToHexRgb(attributes.textColor) + "\">";
        closing = "</font>";
    }
    for (const auto& [on, tag] :
         {std::pair{attributes.IsBolded(), 'b'}, std::pair{attributes.IsItalicized(), 'i'},
          std::pair{attributes.IsUnderlined(), 'u'}}) {
        if (on) {
            out += '<';
            out += tag;
            out += '>';
            closing.insert(0, std::string("</") + tag + '>');
        }
    }
    AppendEscaped(out, zelcore::ToUTF8(span.GetCaptionText()));
    out += closing;
}

// The {\anN} tag for the caption's placement ("" for bottom centre), noting what
// the tag cannot say.
std::string PlacementTag(const Caption& caption, LossReport& losses, std::size_t index) {
    if (caption.GetNumParagraphs() == 0) {
        return {};
    }
    const ParagraphStyleAttributes style =
        caption.GetCaptionTextParagraph(0)->GetParagraphStyleAttributes();
    for (std::uint64_t i = 1; i < caption.GetNumParagraphs(); ++i) {
        if (caption.GetCaptionTextParagraph(i)->GetParagraphStyleAttributes() != style) {
            losses.Note("per-line placement dropped (the first line's is used)", index,
                        caption.GetBeginTime());
            break;
        }
    }
    if (!IsGridAnchor(style.GetAnchorID())) {
        losses.Note("free position dropped (written bottom centre)", index, caption.GetBeginTime());
        return {};
    }
    if (style.GetTextAlignment() != AlignmentOfColumn(style.GetAnchorID())) {
        losses.Note("text alignment other than the anchor's side dropped", index,
                    caption.GetBeginTime());
    }
    const int keypad = KeypadFromAnchor(style.GetAnchorID());
    return keypad == 2 ? std::string() : "{\\an" + std::to_string(keypad) + "}";
}

} // namespace

WriteResult SrtWriter::Write(const std::vector<CaptionPtr>& captions,
                             const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    WriteResult result;
    std::string& out = result.bytes;
    const std::vector<CaptionPtr> sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        const Caption& caption = *sorted[index];
        if (caption.GetBeginTime() < zelmediatypes::kTime_Zero) {
            losses.Note("negative time written as zero", index, caption.GetBeginTime());
        }
        if (caption.GetCaptionType() != kCaptionType_Open &&
            caption.GetCaptionType() != kCaptionType_None) {
            losses.Note("caption type dropped", index, caption.GetBeginTime());
        }
        out += std::to_string(index + 1) + "\r\n";
        out += FormatClockMilliseconds(caption.GetBeginTime(), ',') + " --> " +
               FormatClockMilliseconds(caption.GetEndTime(), ',') + "\r\n";
        std::string placement = PlacementTag(caption, losses, index);
        for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
            const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
            if (zelcore::ToUTF8(paragraph.GetText()).find_first_not_of(" \t") ==
                std::string::npos) {
                losses.Note("empty line dropped", index, caption.GetBeginTime());
                continue;
            }
            out += placement;
            placement.clear();
            for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
                const CaptionTextSpan& span = *paragraph.GetCaptionTextSpan(s);
                losses.NoteSpanLosses(span.StyleAttributes(), kSrtKeeps, index,
                                      caption.GetBeginTime());
                AppendSpan(out, span);
            }
            out += "\r\n";
        }
        out += "\r\n";
    }
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
