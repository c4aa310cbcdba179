#include "captionformats/WebVttWriter.h"

#include "common/CaptionOrder.h"
#include "common/ClockText.h"
#include "common/LossReport.h"
#include "webvtt/VttColorClasses.h"
#include "webvtt/VttPlacement.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

// Colours are checked against the colour classes separately.
constexpr SpanCapabilities kVttKeeps{.bold = true,
                                     .italic = true,
                                     .underline = true,
                                     .textColor = true,
                                     .textOpacity = true,
                                     .backgroundColor = true};

void AppendEscaped(std::string& out, std::string_view text) {
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        default:
            out += c;
        }
    }
}

class VttCaptionWriter {
public:
    VttCaptionWriter(std::string& out, LossReport& losses)
        : out_(out)
        , losses_(losses) {}

    void Write(const Caption& caption, std::size_t index) {
        index_ = index;
        begin_ = caption.GetBeginTime();
        if (caption.GetBeginTime() < zelmediatypes::kTime_Zero) {
            Lose("negative time written as zero");
        }
        if (caption.GetCaptionType() != kCaptionType_Open &&
            caption.GetCaptionType() != kCaptionType_None) {
            Lose("caption type dropped");
        }
        out_ += FormatClockMilliseconds(caption.GetBeginTime(), '.') + " --> " +
                FormatClockMilliseconds(caption.GetEndTime(), '.');
        out_ += Settings(caption) + '\n';
        for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
            const CaptionTextParagraph& paragraph = *caption.GetCaptionTextParagraph(p);
            if (paragraph.GetParagraphTextLength() == 0) {
                Lose("empty line dropped");
                continue;
            }
            for (std::uint64_t s = 0; s < paragraph.GetNumSpans(); ++s) {
                AppendSpan(*paragraph.GetCaptionTextSpan(s));
            }
            out_ += '\n';
        }
        out_ += '\n';
    }

private:
    void Lose(const std::string& what) { losses_.Note(what, index_, begin_); }

    std::string Settings(const Caption& caption) {
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
        std::vector<std::string> approximations;
        std::string settings =
            webvtt::SettingsOfPlacement(style, first.GetCaptionPosition(), approximations);
        for (const std::string& note : approximations) {
            Lose(note);
        }
        return settings;
    }

    void AppendSpan(const CaptionTextSpan& span) {
        const TextSpanAttributes& attributes = span.StyleAttributes();
        losses_.NoteSpanLosses(attributes, kVttKeeps, index_, begin_);
        std::string classes;
        if (attributes.textColor != kCaptioningColor_White) {
            const std::string_view name = webvtt::ClassOfColor(attributes.textColor);
            if (name.empty()) {
                Lose("text colour other than a WebVTT colour class dropped");
            } else {
                classes += '.' + std::string(name);
            }
        }
        if (!attributes.backgroundColor.IsTransparent()) {
            const std::string_view name = webvtt::ClassOfColor(attributes.backgroundColor);
            if (name.empty()) {
                Lose("background colour other than a WebVTT colour class dropped");
            } else {
                classes += ".bg_" + std::string(name);
            }
        }
        std::string closing;
        if (!classes.empty()) {
            out_ += "<c" + classes + '>';
            closing = "</c>";
        }
        for (const auto& [on, tag] :
             {std::pair{attributes.IsBolded(), 'b'}, std::pair{attributes.IsItalicized(), 'i'},
              std::pair{attributes.IsUnderlined(), 'u'}}) {
            if (on) {
                out_ += std::string("<") + tag + '>';
                closing.insert(0, std::string("</") + tag + '>');
            }
        }
        AppendEscaped(out_, zelcore::ToUTF8(span.GetCaptionText()));
        out_ += closing;
    }

    std::string& out_;
    LossReport& losses_;
    std::size_t index_ = 0;
    zelmediatypes::TickTime begin_;
};

} // namespace

WriteResult WebVttWriter::Write(const std::vector<CaptionPtr>& captions,
                                const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    WriteResult result;
    result.bytes = "WEBVTT\n\n";
    VttCaptionWriter writer(result.bytes, losses);
    const std::vector<CaptionPtr> sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        writer.Write(*sorted[index], index);
    }
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
