#include "CaptionJson.h"

#include "JsonNumbers.h"
#include "JsonValues.h"

#include "JsonText.h"

#include <cmath>
#include <optional>
#include <string_view>

namespace platform::core {
namespace {

// Writes the keys of one JSON object in turn: the first opens the object,
// each later one follows a comma.
class ObjectKeys {
public:
    explicit ObjectKeys(std::string& out)
        : out_(out) {}
    void operator()(const char* name) {
        out_ += separator_;
        separator_ = ',';
        AppendJsonString(std::string_view(name), out_);
        out_ += ':';
    }

private:
    std::string& out_;
    char separator_ = '{';
};

using zelcaptioning::CaptioningColor;
using zelcaptioning::TextSpanAttributes;

// Paragraph anchors are grid cells 0 to 8 or kAnchorID_Free.
constexpr std::int64_t kLowestAnchor = 0;
constexpr std::int64_t kHighestAnchor = zelcaptioning::kAnchorID_Free;

// The caption's members in ascending key order, as QJsonDocument writes an
// object; a member holding its default (a default-constructed value) is left
// out. Member paths are spelled only for an error.
class CaptionWriter {
public:
    CaptionWriter(std::string& out, const std::function<std::string()>& path)
        : out_(out)
        , path_(path) {}

    void Caption(const zelcaptioning::Caption& caption) {
        static const zelcaptioning::Caption kDefaults;
        out_ += "{\"begin\":";
        AppendJsonString(Int64ToString(caption.GetBeginTime().GetTicks()), out_);
        out_ += ",\"end\":";
        AppendJsonString(Int64ToString(caption.GetEndTime().GetTicks()), out_);
        out_ += ",\"paragraphs\":[";
        for (std::uint64_t i = 0; i < caption.GetNumParagraphs(); ++i) {
            out_ += i == 0 ? "" : ",";
            Paragraph(*caption.GetCaptionTextParagraph(i), i);
        }
        out_ += ']';
        if (caption.GetCaptionType() != kDefaults.GetCaptionType()) {
            out_ += ",\"type\":";
            Name(caption.GetCaptionType(), [&] { return path_() + ".type"; });
        }
        out_ += '}';
    }

private:
    using Path = std::function<std::string()>;

    template <typename Enum> void Name(Enum value, const Path& path) {
        const std::optional<std::string_view> name = NameOf(value);
        if (!name) {
            throw JsonValueError(path(), "value " + std::to_string(static_cast<long long>(value)) +
                                             " has no name in project files");
        }
        AppendJsonString(*name, out_);
    }

    void Float(float value, const Path& path) {
        if (!std::isfinite(value)) {
            throw JsonValueError(path(), "a project file holds only finite numbers");
        }
        AppendJsonNumber(FloatAsShortestDouble(value), out_);
    }

    void Count(std::uint64_t value, const Path& path) {
        if (value > static_cast<std::uint64_t>(kLargestExactJsonInteger)) {
            throw JsonValueError(path(), "a project file holds counts up to 2^53");
        }
        AppendJsonInteger(static_cast<std::int64_t>(value), out_);
    }

    void Color(const CaptioningColor& color, const Path& path) {
        const float channels[] = {color.red, color.green, color.blue, color.alpha};
        out_ += '[';
        for (int i = 0; i < 4; ++i) {
            out_ += i == 0 ? "" : ",";
            Float(channels[i], [&] { return path() + "[" + std::to_string(i) + "]"; });
        }
        out_ += ']';
    }

    void Paragraph(const zelcaptioning::CaptionTextParagraph& paragraph, std::uint64_t index) {
        static const zelcaptioning::ParagraphStyleAttributes kDefaults;
        const Path path = [&] {
            return path_() + ".paragraphs[" + std::to_string(index) + "]";
        };
        const zelcaptioning::ParagraphStyleAttributes style =
            paragraph.GetParagraphStyleAttributes();
        if (style.GetAnchorID() < kLowestAnchor || style.GetAnchorID() > kHighestAnchor) {
            throw JsonValueError(path() + ".anchor", "anchor " +
                                                         std::to_string(style.GetAnchorID()) +
                                                         " is not a grid cell or free");
        }
        ObjectKeys key(out_);
        if (style.GetTextAlignment() != kDefaults.GetTextAlignment()) {
            key("alignment");
            Name(style.GetTextAlignment(), [&] { return path() + ".alignment"; });
        }
        if (style.GetAnchorID() != kDefaults.GetAnchorID()) {
            key("anchor");
            AppendJsonInteger(style.GetAnchorID(), out_);
        }
        if (paragraph.HasMeasuredLineSize()) {
            key("measuredSize");
            out_ += "{\"height\":";
            Count(paragraph.GetParagraphLineHeight(),
                  [&] { return path() + ".measuredSize.height"; });
            out_ += ",\"width\":";
            Count(paragraph.GetParagraphLineWidth(),
                  [&] { return path() + ".measuredSize.width"; });
            out_ += '}';
        }
        if (paragraph.GetCaptionPosition() != zelcaptioning::kPosition_Uninitialized) {
            key("position");
            out_ += "{\"x\":";
            AppendJsonString(RationalToString(paragraph.GetCaptionPosition().GetX()), out_);
            out_ += ",\"y\":";
            AppendJsonString(RationalToString(paragraph.GetCaptionPosition().GetY()), out_);
            out_ += '}';
        }
        key("spans");
        out_ += '[';
        for (std::uint64_t i = 0; i < paragraph.GetNumSpans(); ++i) {
            out_ += i == 0 ? "" : ",";
            Span(*paragraph.GetCaptionTextSpan(i),
                 [&] { return path() + ".spans[" + std::to_string(i) + "]"; });
        }
        out_ += "]}";
    }

    void Span(const zelcaptioning::CaptionTextSpan& span, const Path& path) {
        static const TextSpanAttributes kDefaults;
        const TextSpanAttributes& a = span.StyleAttributes();
        ObjectKeys key(out_);
        const auto colour = [&](const char* name, const CaptioningColor& value,
                                const CaptioningColor& byDefault) {
            if (!(value == byDefault)) {
                key(name);
                Color(value, [&] { return path() + "." + name; });
            }
        };
        const auto flag = [&](const char* name, bool value, bool byDefault) {
            if (value != byDefault) {
                key(name);
                out_ += value ? "true" : "false";
            }
        };
        colour("backgroundColor", a.backgroundColor, kDefaults.backgroundColor);
        flag("bold", a.IsBolded(), kDefaults.IsBolded());
        colour("edgeColor", a.edgeColor, kDefaults.edgeColor);
        if (!(a.edgeWidth == kDefaults.edgeWidth)) {
            key("edgeWidth");
            Float(a.edgeWidth, [&] { return path() + ".edgeWidth"; });
        }
        if (a.GetFontName() != kDefaults.GetFontName()) {
            key("fontName");
            AppendJsonString(zelcore::View(a.GetFontName()), out_);
        }
        if (!(a.GetFontSize() == kDefaults.GetFontSize())) {
            key("fontSize");
            Float(a.GetFontSize(), [&] { return path() + ".fontSize"; });
        }
        flag("italic", a.IsItalicized(), kDefaults.IsItalicized());
        key("text");
        AppendJsonString(zelcore::View(span.GetCaptionText()), out_);
        colour("textColor", a.textColor, kDefaults.textColor);
        if (a.GetTextEdge() != kDefaults.GetTextEdge()) {
            key("textEdge");
            Name(a.GetTextEdge(), [&] { return path() + ".textEdge"; });
        }
        flag("underline", a.IsUnderlined(), kDefaults.IsUnderlined());
        out_ += '}';
    }

    std::string& out_;
    const std::function<std::string()>& path_;
};

CaptioningColor ColorFromJson(const JsonReader& reader) {
    if (reader.ArraySize() != 4) {
        reader.Fail("expected [red, green, blue, alpha]");
    }
    return CaptioningColor(reader.Element(0).Float(), reader.Element(1).Float(),
                           reader.Element(2).Float(), reader.Element(3).Float());
}

// One pass over the members, as a span has many that are mostly left out.
zelcaptioning::CaptionTextSpanPtr SpanFromJson(const JsonReader& reader) {
    TextSpanAttributes a;
    std::optional<zelcore::UTF16String> text;
    reader.ForEachMember([&](std::string_view key, const JsonReader& member) {
        if (key == "text") {
            text = ReadText(member);
        } else if (key == "fontName") {
            a.SetFontName(ReadText(member));
        } else if (key == "fontSize") {
            a.SetFontSize(member.Float());
        } else if (key == "bold") {
            a.SetBolded(member.Bool());
        } else if (key == "italic") {
            a.SetItalicized(member.Bool());
        } else if (key == "underline") {
            a.SetUnderlined(member.Bool());
        } else if (key == "textEdge") {
            a.SetTextEdge(ReadNamed(member, &TextEdgeNamed));
        } else if (key == "edgeWidth") {
            a.edgeWidth = member.Float();
        } else if (key == "textColor") {
            a.textColor = ColorFromJson(member);
        } else if (key == "backgroundColor") {
            a.backgroundColor = ColorFromJson(member);
        } else if (key == "edgeColor") {
            a.edgeColor = ColorFromJson(member);
        }
    });
    if (!text) {
        reader.Member("text"); // fails, naming the missing member
    }
    return zelcaptioning::CaptionTextSpanPtr(
        new zelcaptioning::CaptionTextSpan(std::move(*text), a));
}

// Version 1 files write null for a line never placed.
zelcaptioning::Position PositionFromJson(const JsonReader& reader) {
    if (reader.IsNull()) {
        return zelcaptioning::kPosition_Uninitialized;
    }
    return zelcaptioning::Position(reader.Member("x").RationalString(),
                                   reader.Member("y").RationalString());
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
    reader.Member("spans").ForEachElement([&](const JsonReader& span, std::size_t) {
        paragraph->AppendCaptionTextSpan(SpanFromJson(span));
    });
    return paragraph;
}

} // namespace

void AppendCaptionJson(const zelcaptioning::Caption& caption,
                       const std::function<std::string()>& path, std::string& out) {
    CaptionWriter(out, path).Caption(caption);
}

zelcaptioning::CaptionPtr CaptionFromJson(const JsonReader& reader) {
    zelcaptioning::CaptionPtr caption(new zelcaptioning::Caption);
    caption->SetBeginTime(zelmediatypes::TickTime(reader.Member("begin").Int64String()));
    caption->SetEndTime(zelmediatypes::TickTime(reader.Member("end").Int64String()));
    if (const auto member = reader.FindMember("type")) {
        caption->SetCaptionType(ReadNamed(*member, &CaptionTypeNamed));
    }
    reader.Member("paragraphs").ForEachElement([&](const JsonReader& paragraph, std::size_t) {
        caption->AppendCaptionTextParagraph(ParagraphFromJson(paragraph));
    });
    return caption;
}

} // namespace platform::core
