#pragma once

// Compact construction and inspection of captions for the editor's tests.
#include "zelcaptioning/Caption.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace test {

using zelcaptioning::Caption;
using zelcaptioning::CaptionPtr;
using zelcaptioning::CaptionTextParagraphPtr;
using zelcaptioning::TextSpanAttributes;

struct SpanSpec {
    std::u16string text;
    TextSpanAttributes attributes{};
};

inline TextSpanAttributes Bold() {
    TextSpanAttributes a;
    a.SetBolded(true);
    return a;
}

inline TextSpanAttributes Italic() {
    TextSpanAttributes a;
    a.SetItalicized(true);
    return a;
}

inline zelcore::UTF16String U(std::u16string_view text) {
    return {text.data(), text.size()};
}

// One paragraph per inner list, unplaced.
inline CaptionPtr MakeCaption(std::initializer_list<std::initializer_list<SpanSpec>> paragraphs) {
    CaptionPtr caption(new Caption);
    for (const auto& spans : paragraphs) {
        CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
        for (const SpanSpec& spec : spans) {
            paragraph->AppendCaptionTextSpan(
                new zelcaptioning::CaptionTextSpan(U(spec.text), spec.attributes));
        }
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

// One single-span paragraph per text, placed at (column, row) of a grid.
struct GridLine {
    std::u16string text;
    int column;
    int row;
};
inline CaptionPtr MakeGridCaption(std::initializer_list<GridLine> lines, int columns = 32,
                                  int rows = 15) {
    CaptionPtr caption(new Caption);
    for (const GridLine& line : lines) {
        CaptionTextParagraphPtr paragraph(new zelcaptioning::CaptionTextParagraph);
        paragraph->AppendCaptionTextSpan(new zelcaptioning::CaptionTextSpan(U(line.text), {}));
        paragraph->SetCaptionPosition(
            zelcaptioning::Position(zelcaptioning::Rational(line.column, columns),
                                    zelcaptioning::Rational(line.row, rows)));
        caption->AppendCaptionTextParagraph(paragraph);
    }
    return caption;
}

// The texts of a paragraph's spans, for comparing span structure.
inline std::vector<std::string> SpanTexts(const Caption& caption, std::uint64_t paragraph) {
    std::vector<std::string> texts;
    auto p = caption.GetCaptionTextParagraph(paragraph);
    for (std::uint64_t i = 0; i < p->GetNumSpans(); ++i) {
        texts.push_back(zelcore::ToUTF8(p->GetCaptionTextSpan(i)->GetCaptionText()));
    }
    return texts;
}

inline std::string PlainText(const Caption& caption) {
    return zelcore::ToUTF8(caption.GetPlainText());
}

inline zelcaptioning::CaptionTextSpanPtr SpanAt(const Caption& caption, std::uint64_t paragraph,
                                                std::uint64_t span) {
    return caption.GetCaptionTextParagraph(paragraph)->GetCaptionTextSpan(span);
}

inline std::int64_t RowOf(const Caption& caption, std::uint64_t paragraph, int rows = 15) {
    return zelcaptioning::ValueWithScale(
        caption.GetCaptionTextParagraph(paragraph)->GetCaptionPosition().GetY(), rows, true);
}

inline std::int64_t ColumnOf(const Caption& caption, std::uint64_t paragraph, int columns = 32) {
    return zelcaptioning::ValueWithScale(
        caption.GetCaptionTextParagraph(paragraph)->GetCaptionPosition().GetX(), columns, true);
}

} // namespace test
