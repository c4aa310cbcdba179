#include "CaptionJson.h"

#include "JsonNumbers.h"
#include "JsonValues.h"

#include <QJsonArray>

namespace platform::core {
namespace {

using zelcaptioning::CaptioningColor;
using zelcaptioning::TextSpanAttributes;

// Paragraph anchors are grid cells 0 to 8 or kAnchorID_Free.
constexpr std::int64_t kLowestAnchor = 0;
constexpr std::int64_t kHighestAnchor = zelcaptioning::kAnchorID_Free;

QJsonArray ColorToJson(const CaptioningColor& color, const std::string& path) {
    return QJsonArray{FloatToJson(color.red, path + "[0]"), FloatToJson(color.green, path + "[1]"),
                      FloatToJson(color.blue, path + "[2]"),
                      FloatToJson(color.alpha, path + "[3]")};
}

CaptioningColor ColorFromJson(const JsonReader& reader) {
    if (reader.ArraySize() != 4) {
        reader.Fail("expected [red, green, blue, alpha]");
    }
    return CaptioningColor(reader.Element(0).Float(), reader.Element(1).Float(),
                           reader.Element(2).Float(), reader.Element(3).Float());
}

QJsonObject SpanToJson(const zelcaptioning::CaptionTextSpan& span, const std::string& path) {
    const TextSpanAttributes& a = span.StyleAttributes();
    return QJsonObject{
        {"text", ToQString(span.GetCaptionText())},
        {"fontName", ToQString(a.GetFontName())},
        {"fontSize", FloatToJson(a.GetFontSize(), path + ".fontSize")},
        {"bold", a.IsBolded()},
        {"italic", a.IsItalicized()},
        {"underline", a.IsUnderlined()},
        {"textEdge", NameToJson(a.GetTextEdge(), path + ".textEdge")},
        {"edgeWidth", FloatToJson(a.edgeWidth, path + ".edgeWidth")},
        {"textColor", ColorToJson(a.textColor, path + ".textColor")},
        {"backgroundColor", ColorToJson(a.backgroundColor, path + ".backgroundColor")},
        {"edgeColor", ColorToJson(a.edgeColor, path + ".edgeColor")},
    };
}

zelcaptioning::CaptionTextSpanPtr SpanFromJson(const JsonReader& reader) {
    TextSpanAttributes a;
    a.SetFontName(ReadText(reader.Member("fontName")));
    a.SetFontSize(reader.Member("fontSize").Float());
    a.SetBolded(reader.Member("bold").Bool());
    a.SetItalicized(reader.Member("italic").Bool());
    a.SetUnderlined(reader.Member("underline").Bool());
    a.SetTextEdge(ReadNamed(reader.Member("textEdge"), &TextEdgeNamed));
    a.edgeWidth = reader.Member("edgeWidth").Float();
    a.textColor = ColorFromJson(reader.Member("textColor"));
    a.backgroundColor = ColorFromJson(reader.Member("backgroundColor"));
    a.edgeColor = ColorFromJson(reader.Member("edgeColor"));
    return zelcaptioning::CaptionTextSpanPtr(
        new zelcaptioning::CaptionTextSpan(ReadText(reader.Member("text")), a));
}

QJsonValue PositionToJson(const zelcaptioning::Position& position) {
    if (position == zelcaptioning::kPosition_Uninitialized) {
        return QJsonValue(QJsonValue::Null);
    }
    return QJsonObject{{"x", QString::fromStdString(RationalToString(position.GetX()))},
                       {"y", QString::fromStdString(RationalToString(position.GetY()))}};
}

zelcaptioning::Position PositionFromJson(const JsonReader& reader) {
    if (reader.IsNull()) {
        return zelcaptioning::kPosition_Uninitialized;
    }
    return zelcaptioning::Position(reader.Member("x").RationalString(),
                                   reader.Member("y").RationalString());
}

QJsonValue MeasuredSizeToJson(const zelcaptioning::CaptionTextParagraph& paragraph,
                              const std::string& path) {
    if (!paragraph.HasMeasuredLineSize()) {
        return QJsonValue(QJsonValue::Null);
    }
    return QJsonObject{
        {"width", CountToJson(paragraph.GetParagraphLineWidth(), path + ".width")},
        {"height", CountToJson(paragraph.GetParagraphLineHeight(), path + ".height")}};
}

void ReadMeasuredSize(const JsonReader& reader, zelcaptioning::CaptionTextParagraph& paragraph) {
    if (reader.IsNull()) {
        return;
    }
    const std::int64_t width = reader.Member("width").Integer(0, kLargestExactJsonInteger);
    // A measured line has a height; a zero height means "not measured".
    const std::int64_t height = reader.Member("height").Integer(1, kLargestExactJsonInteger);
    paragraph.SetMeasuredLineSize(static_cast<std::uint64_t>(width),
                                  static_cast<std::uint64_t>(height));
}

QJsonObject ParagraphToJson(const zelcaptioning::CaptionTextParagraph& paragraph,
                            const std::string& path) {
    QJsonArray spans;
    for (std::uint64_t i = 0; i < paragraph.GetNumSpans(); ++i) {
        spans.append(SpanToJson(*paragraph.GetCaptionTextSpan(i),
                                path + ".spans[" + std::to_string(i) + "]"));
    }
    const zelcaptioning::ParagraphStyleAttributes style = paragraph.GetParagraphStyleAttributes();
    if (style.GetAnchorID() < kLowestAnchor || style.GetAnchorID() > kHighestAnchor) {
        throw JsonValueError(path + ".anchor", "anchor " + std::to_string(style.GetAnchorID()) +
                                                   " is not a grid cell or free");
    }
    return QJsonObject{
        {"alignment", NameToJson(style.GetTextAlignment(), path + ".alignment")},
        {"anchor", style.GetAnchorID()},
        {"position", PositionToJson(paragraph.GetCaptionPosition())},
        {"measuredSize", MeasuredSizeToJson(paragraph, path + ".measuredSize")},
        {"spans", spans},
    };
}

zelcaptioning::CaptionTextParagraphPtr ParagraphFromJson(const JsonReader& reader) {
    zelcaptioning::CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
    zelcaptioning::ParagraphStyleAttributes style;
    style.SetTextAlignment(ReadNamed(reader.Member("alignment"), &TextAlignmentNamed));
    style.SetAnchorID(static_cast<zelcaptioning::AnchorID>(
        reader.Member("anchor").Integer(kLowestAnchor, kHighestAnchor)));
    paragraph->SetParagraphStyleAttributes(style);
    paragraph->SetCaptionPosition(PositionFromJson(reader.Member("position")));
    ReadMeasuredSize(reader.Member("measuredSize"), *paragraph);
    const JsonReader spans = reader.Member("spans");
    for (std::size_t i = 0, count = spans.ArraySize(); i < count; ++i) {
        paragraph->AppendCaptionTextSpan(SpanFromJson(spans.Element(i)));
    }
    return paragraph;
}

} // namespace

QJsonObject CaptionToJson(const zelcaptioning::Caption& caption, const std::string& path) {
    QJsonArray paragraphs;
    for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
        paragraphs.append(ParagraphToJson(*caption.GetCaptionTextParagraph(i),
                                          path + ".paragraphs[" + std::to_string(i) + "]"));
    }
    return QJsonObject{
        {"begin", QString::fromStdString(Int64ToString(caption.GetBeginTime().GetTicks()))},
        {"end", QString::fromStdString(Int64ToString(caption.GetEndTime().GetTicks()))},
        {"type", NameToJson(caption.GetCaptionType(), path + ".type")},
        {"paragraphs", paragraphs},
    };
}

zelcaptioning::CaptionPtr CaptionFromJson(const JsonReader& reader) {
    zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
    caption->SetBeginTime(zelmediatypes::TickTime(reader.Member("begin").Int64String()));
    caption->SetEndTime(zelmediatypes::TickTime(reader.Member("end").Int64String()));
    caption->SetCaptionType(ReadNamed(reader.Member("type"), &CaptionTypeNamed));
    const JsonReader paragraphs = reader.Member("paragraphs");
    for (std::size_t i = 0, count = paragraphs.ArraySize(); i < count; ++i) {
        caption->AppendCaptionTextParagraph(ParagraphFromJson(paragraphs.Element(i)));
    }
    return caption;
}

} // namespace platform::core
