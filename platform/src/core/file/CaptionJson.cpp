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

// Members equal to their defaults (a default-constructed attribute set) are
// left out, which keeps a plain caption to a few members.
QJsonObject SpanToJson(const zelcaptioning::CaptionTextSpan& span, const std::string& path) {
    static const TextSpanAttributes kDefaults;
    const TextSpanAttributes& a = span.StyleAttributes();
    QJsonObject object{{"text", ToQString(span.GetCaptionText())}};
    if (a.GetFontName() != kDefaults.GetFontName()) {
        object.insert("fontName", ToQString(a.GetFontName()));
    }
    if (!(a.GetFontSize() == kDefaults.GetFontSize())) {
        object.insert("fontSize", FloatToJson(a.GetFontSize(), path + ".fontSize"));
    }
    if (a.IsBolded() != kDefaults.IsBolded()) {
        object.insert("bold", a.IsBolded());
    }
    if (a.IsItalicized() != kDefaults.IsItalicized()) {
        object.insert("italic", a.IsItalicized());
    }
    if (a.IsUnderlined() != kDefaults.IsUnderlined()) {
        object.insert("underline", a.IsUnderlined());
    }
    if (a.GetTextEdge() != kDefaults.GetTextEdge()) {
        object.insert("textEdge", NameToJson(a.GetTextEdge(), path + ".textEdge"));
    }
    if (!(a.edgeWidth == kDefaults.edgeWidth)) {
        object.insert("edgeWidth", FloatToJson(a.edgeWidth, path + ".edgeWidth"));
    }
    const auto colour = [&](const char* key, const CaptioningColor& value,
                            const CaptioningColor& byDefault) {
        if (!(value == byDefault)) {
            object.insert(QLatin1String(key), ColorToJson(value, path + "." + key));
        }
    };
    colour("textColor", a.textColor, kDefaults.textColor);
    colour("backgroundColor", a.backgroundColor, kDefaults.backgroundColor);
    colour("edgeColor", a.edgeColor, kDefaults.edgeColor);
    return object;
}

zelcaptioning::CaptionTextSpanPtr SpanFromJson(const JsonReader& reader) {
    TextSpanAttributes a;
    if (const auto member = reader.FindMember("fontName")) {
        a.SetFontName(ReadText(*member));
    }
    if (const auto member = reader.FindMember("fontSize")) {
        a.SetFontSize(member->Float());
    }
    if (const auto member = reader.FindMember("bold")) {
        a.SetBolded(member->Bool());
    }
    if (const auto member = reader.FindMember("italic")) {
        a.SetItalicized(member->Bool());
    }
    if (const auto member = reader.FindMember("underline")) {
        a.SetUnderlined(member->Bool());
    }
    if (const auto member = reader.FindMember("textEdge")) {
        a.SetTextEdge(ReadNamed(*member, &TextEdgeNamed));
    }
    if (const auto member = reader.FindMember("edgeWidth")) {
        a.edgeWidth = member->Float();
    }
    if (const auto member = reader.FindMember("textColor")) {
        a.textColor = ColorFromJson(*member);
    }
    if (const auto member = reader.FindMember("backgroundColor")) {
        a.backgroundColor = ColorFromJson(*member);
    }
    if (const auto member = reader.FindMember("edgeColor")) {
        a.edgeColor = ColorFromJson(*member);
    }
    return zelcaptioning::CaptionTextSpanPtr(
        new zelcaptioning::CaptionTextSpan(ReadText(reader.Member("text")), a));
}

QJsonObject PositionToJson(const zelcaptioning::Position& position) {
    return QJsonObject{{"x", QString::fromStdString(RationalToString(position.GetX()))},
                       {"y", QString::fromStdString(RationalToString(position.GetY()))}};
}

// Version 1 files write null for a line never placed.
zelcaptioning::Position PositionFromJson(const JsonReader& reader) {
    if (reader.IsNull()) {
        return zelcaptioning::kPosition_Uninitialized;
    }
    return zelcaptioning::Position(reader.Member("x").RationalString(),
                                   reader.Member("y").RationalString());
}

QJsonObject MeasuredSizeToJson(const zelcaptioning::CaptionTextParagraph& paragraph,
                               const std::string& path) {
    return QJsonObject{
        {"width", CountToJson(paragraph.GetParagraphLineWidth(), path + ".width")},
        {"height", CountToJson(paragraph.GetParagraphLineHeight(), path + ".height")}};
}

// Version 1 files write null for a line not measured.
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
    static const zelcaptioning::ParagraphStyleAttributes kDefaults;
    QJsonObject object{{"spans", spans}};
    if (style.GetTextAlignment() != kDefaults.GetTextAlignment()) {
        object.insert("alignment", NameToJson(style.GetTextAlignment(), path + ".alignment"));
    }
    if (style.GetAnchorID() != kDefaults.GetAnchorID()) {
        object.insert("anchor", style.GetAnchorID());
    }
    if (paragraph.GetCaptionPosition() != zelcaptioning::kPosition_Uninitialized) {
        object.insert("position", PositionToJson(paragraph.GetCaptionPosition()));
    }
    if (paragraph.HasMeasuredLineSize()) {
        object.insert("measuredSize", MeasuredSizeToJson(paragraph, path + ".measuredSize"));
    }
    return object;
}

zelcaptioning::CaptionTextParagraphPtr ParagraphFromJson(const JsonReader& reader) {
    zelcaptioning::CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
    zelcaptioning::ParagraphStyleAttributes style;
    if (const auto member = reader.FindMember("alignment")) {
        style.SetTextAlignment(ReadNamed(*member, &TextAlignmentNamed));
    }
    if (const auto member = reader.FindMember("anchor")) {
        style.SetAnchorID(
            static_cast<zelcaptioning::AnchorID>(member->Integer(kLowestAnchor, kHighestAnchor)));
    }
    paragraph->SetParagraphStyleAttributes(style);
    if (const auto member = reader.FindMember("position")) {
        paragraph->SetCaptionPosition(PositionFromJson(*member));
    }
    if (const auto member = reader.FindMember("measuredSize")) {
        ReadMeasuredSize(*member, *paragraph);
    }
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
    QJsonObject object{
        {"begin", QString::fromStdString(Int64ToString(caption.GetBeginTime().GetTicks()))},
        {"end", QString::fromStdString(Int64ToString(caption.GetEndTime().GetTicks()))},
        {"paragraphs", paragraphs},
    };
    static const zelcaptioning::Caption kDefaults;
    if (caption.GetCaptionType() != kDefaults.GetCaptionType()) {
        object.insert("type", NameToJson(caption.GetCaptionType(), path + ".type"));
    }
    return object;
}

zelcaptioning::CaptionPtr CaptionFromJson(const JsonReader& reader) {
    zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
    caption->SetBeginTime(zelmediatypes::TickTime(reader.Member("begin").Int64String()));
    caption->SetEndTime(zelmediatypes::TickTime(reader.Member("end").Int64String()));
    if (const auto member = reader.FindMember("type")) {
        caption->SetCaptionType(ReadNamed(*member, &CaptionTypeNamed));
    }
    const JsonReader paragraphs = reader.Member("paragraphs");
    for (std::size_t i = 0, count = paragraphs.ArraySize(); i < count; ++i) {
        caption->AppendCaptionTextParagraph(ParagraphFromJson(paragraphs.Element(i)));
    }
    return caption;
}

} // namespace platform::core
