#include "captionformats/TtmlWriter.h"

#include "common/CaptionOrder.h"
#include "common/ClockText.h"
#include "common/CssColor.h"
#include "common/KeypadAnchor.h"
#include "common/LossReport.h"
#include "ttml/TtmlPlacement.h"

#include <pugixml.hpp>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <map>
#include <sstream>

namespace captionformats {

using namespace zelcaptioning;
using zelmediatypes::TickTime;

namespace {

constexpr SpanCapabilities kTtmlKeeps{.bold = true,
                                      .italic = true,
                                      .underline = true,
                                      .textColor = true,
                                      .textOpacity = true,
                                      .backgroundColor = true,
                                      .fontName = true,
                                      .fontSize = true,
                                      .edge = true};

std::string ColorText(const CaptioningColor& color) {
    std::string text = ToHexRgb(color);
    if (color.alpha != 1.0f) {
        char alpha[3];
        std::snprintf(
            alpha, sizeof alpha, "%02x",
            static_cast<unsigned>(std::lround(std::clamp(color.alpha, 0.0f, 1.0f) * 255.0f)));
        text += alpha;
    }
    return text;
}

std::string Number(float value) {
    char text[32];
    const auto result = std::to_chars(text, text + sizeof text, value);
    return std::string(text, result.ptr);
}

std::string TimeText(TickTime time) {
    const TickTime clamped = std::max(time, zelmediatypes::kTime_Zero);
    if (TimeFromMilliseconds(RoundToMilliseconds(clamped)) == clamped) {
        return FormatClockMilliseconds(clamped, '.');
    }
    return std::to_string(clamped.GetTicks()) + 't';
}

class TtmlBuilder {
public:
    TtmlBuilder(LossReport& losses)
        : losses_(losses) {
        pugi::xml_node tt = document_.append_child("tt");
        tt.append_attribute("xmlns") = "http://www.w3.org/ns/ttml";
        tt.append_attribute("xmlns:ttp") = "http://www.w3.org/ns/ttml#parameter";
        tt.append_attribute("xmlns:tts") = "http://www.w3.org/ns/ttml#styling";
        tt.append_attribute("xml:lang") = "";
        tt.append_attribute("ttp:timeBase") = "media";
        tt.append_attribute("ttp:tickRate") =
            std::to_string(zelmediatypes::kTicksPerSecond).c_str();
        layout_ = tt.append_child("head").append_child("layout");
        div_ = tt.append_child("body").append_child("div");
    }

    void Add(const Caption& caption, std::size_t index) {
        index_ = index;
        begin_ = caption.GetBeginTime();
        if (begin_ < zelmediatypes::kTime_Zero) {
            Lose("negative time written as zero");
        }
        if (caption.GetCaptionType() != kCaptionType_Open &&
            caption.GetCaptionType() != kCaptionType_None) {
            Lose("caption type dropped");
        }
        // One paragraph per line, for people reading the file.
        div_.append_child(pugi::node_pcdata).set_value("\n");
        pugi::xml_node p = div_.append_child("p");
        p.append_attribute("begin") = TimeText(caption.GetBeginTime()).c_str();
        p.append_attribute("end") = TimeText(caption.GetEndTime()).c_str();
        if (caption.GetNumParagraphs() > 0) {
            Place(p, caption);
        }
        bool firstLine = true;
        for (std::uint64_t l = 0; l < caption.GetNumParagraphs(); ++l) {
            const CaptionTextParagraph& line = *caption.GetCaptionTextParagraph(l);
            if (line.GetParagraphTextLength() == 0) {
                Lose("empty line dropped");
                continue;
            }
            if (!firstLine) {
                p.append_child("br");
            }
            firstLine = false;
            for (std::uint64_t s = 0; s < line.GetNumSpans(); ++s) {
                AddSpan(p, *line.GetCaptionTextSpan(s));
            }
        }
    }

    std::string Text() const {
        std::ostringstream out;
        document_.save(out, "", pugi::format_raw);
        std::string text = out.str();
        return text + "\n";
    }

private:
    void Lose(const std::string& what) { losses_.Note(what, index_, begin_); }

    void Place(pugi::xml_node& p, const Caption& caption) {
        const CaptionTextParagraph& first = *caption.GetCaptionTextParagraph(0);
        const ParagraphStyleAttributes style = first.GetParagraphStyleAttributes();
        for (std::uint64_t l = 1; l < caption.GetNumParagraphs(); ++l) {
            const CaptionTextParagraph& line = *caption.GetCaptionTextParagraph(l);
            if (line.GetParagraphStyleAttributes() != style ||
                (style.GetAnchorID() == kAnchorID_Free &&
                 line.GetCaptionPosition() != kPosition_Uninitialized)) {
                Lose("per-line placement dropped (the first line's is used)");
                break;
            }
        }
        if (IsGridAnchor(style.GetAnchorID()) &&
            style.GetTextAlignment() != AlignmentOfColumn(style.GetAnchorID())) {
            Lose("text alignment other than the anchor's side dropped");
        }
        bool exact = true;
        const ttml::RegionGeometry geometry =
            ttml::RegionOfPlacement(style, first.GetCaptionPosition(), exact);
        if (!exact) {
            Lose("free position rounded into the area to nine decimals");
        }
        auto [region, inserted] =
            regions_.try_emplace(geometry, "r" + std::to_string(regions_.size() + 1));
        if (inserted) {
            pugi::xml_node node = layout_.append_child("region");
            node.append_attribute("xml:id") = region->second.c_str();
            node.append_attribute("tts:origin") = geometry.origin.c_str();
            node.append_attribute("tts:extent") = geometry.extent.c_str();
            node.append_attribute("tts:displayAlign") = geometry.displayAlign.c_str();
        }
        p.append_attribute("region") = region->second.c_str();
        const TextAlignmentType alignment = IsGridAnchor(style.GetAnchorID())
                                                ? AlignmentOfColumn(style.GetAnchorID())
                                                : style.GetTextAlignment();
        static const char* const kAlignments[] = {"left", "center", "right"};
        p.append_attribute("tts:textAlign") = kAlignments[alignment];
    }

    void AddSpan(pugi::xml_node& p, const CaptionTextSpan& span) {
        const TextSpanAttributes& attributes = span.StyleAttributes();
        losses_.NoteSpanLosses(attributes, kTtmlKeeps, index_, begin_);
        pugi::xml_node node = p.append_child("span");
        const TextSpanAttributes defaults;
        if (attributes.textColor != defaults.textColor) {
            node.append_attribute("tts:color") = ColorText(attributes.textColor).c_str();
        }
        if (attributes.backgroundColor != defaults.backgroundColor) {
            node.append_attribute("tts:backgroundColor") =
                ColorText(attributes.backgroundColor).c_str();
        }
        if (!attributes.GetFontName().empty()) {
            node.append_attribute("tts:fontFamily") =
                zelcore::ToUTF8(attributes.GetFontName()).c_str();
        }
        if (attributes.GetFontSize() > 0.0f) {
            node.append_attribute("tts:fontSize") =
                (Number(attributes.GetFontSize()) + "px").c_str();
        }
        if (attributes.IsItalicized()) {
            node.append_attribute("tts:fontStyle") = "italic";
        }
        if (attributes.IsBolded()) {
            node.append_attribute("tts:fontWeight") = "bold";
        }
        if (attributes.IsUnderlined()) {
            node.append_attribute("tts:textDecoration") = "underline";
        }
        if (attributes.GetTextEdge() == TextSpanAttributes::kTextEdge_Uniform &&
            attributes.edgeWidth > 0.0f) {
            node.append_attribute("tts:textOutline") =
                (ColorText(attributes.edgeColor) + ' ' + Number(attributes.edgeWidth) + "px")
                    .c_str();
        } else if (attributes.GetTextEdge() != TextSpanAttributes::kTextEdge_None) {
            Lose("text edges other than a uniform outline dropped");
        }
        const std::string text = zelcore::ToUTF8(span.GetCaptionText());
        if (text.find_first_of("\t\r\n") != std::string::npos ||
            text.find("  ") != std::string::npos) {
            Lose("runs of spaces collapsed");
        }
        node.append_child(pugi::node_pcdata).set_value(text.c_str());
    }

    LossReport& losses_;
    pugi::xml_document document_;
    pugi::xml_node layout_;
    pugi::xml_node div_;
    std::map<ttml::RegionGeometry, std::string> regions_;
    std::size_t index_ = 0;
    TickTime begin_;
};

} // namespace

WriteResult TtmlWriter::Write(const std::vector<CaptionPtr>& captions,
                              const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    TtmlBuilder builder(losses);
    const auto sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        builder.Add(*sorted[index], index);
    }
    WriteResult result;
    result.bytes = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + builder.Text();
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
