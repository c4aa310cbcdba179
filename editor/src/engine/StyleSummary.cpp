#include "SpanGathering.h"
#include "caption_editor/CaptionTextEditor.h"

#include <ostream>

namespace caption_editor {

using zelcaptioning::CaptioningColor;
using zelcaptioning::TextSpanAttributes;

namespace {

// Two bits per style: 1 for a span that has it, 2 for one that lacks it.
struct StyleMask {
    int bits = 0;
    void Add(bool has) { bits |= has ? 1 : 2; }
    bool All() const { return bits == 1; }
};

void FoldColor(const CaptioningColor& color, bool first, CaptioningColor& summary, bool& mixed) {
    if (first) {
        summary = color;
    } else if (!mixed && color != summary) {
        mixed = true;
    }
}

bool Lined(std::int32_t alignment, const zelcore::geom::RectT<int>& block,
           const zelcore::geom::RectT<int>& all) {
    switch (alignment) {
    case zelcaptioning::kTextAlignment_Left:
        return block.left == all.left;
    case zelcaptioning::kTextAlignment_Right:
        return block.right == all.right;
    case zelcaptioning::kTextAlignment_Center: {
        const int centre = block.left + (block.Width() >> 1);
        const int allCentre = all.left + (all.Width() >> 1);
        return centre - allCentre <= 1 && allCentre - centre <= 1;
    }
    default:
        return true;
    }
}

} // namespace

StyleSummary CaptionTextEditor::GetStyleSummary(std::uint64_t start, std::uint64_t end) const {
    StyleSummary summary;
    if (!workingCopy_) {
        return summary;
    }
    const std::vector<detail::SpanRecord> records = detail::GatherSpans(*workingCopy_, start, end);
    StyleMask bold, italic, underline;
    bool fontSizeFound = false;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const TextSpanAttributes& a = records[i].span->StyleAttributes();
        bold.Add(a.IsBolded());
        italic.Add(a.IsItalicized());
        underline.Add(a.IsUnderlined());
        if (!fontSizeFound && a.GetFontSize() != 0.0f) {
            summary.fontSize = a.GetFontSize();
            fontSizeFound = true;
        }
        if (summary.fontName.empty()) {
            summary.fontName = a.GetFontName();
        }
        FoldColor(a.textColor, i == 0, summary.textColor, summary.textColorMixed);
        FoldColor(a.backgroundColor, i == 0, summary.backgroundColor, summary.backgroundColorMixed);
        FoldColor(a.edgeColor, i == 0, summary.edgeColor, summary.edgeColorMixed);
        if (i == 0) {
            summary.edgeWidth = a.edgeWidth;
        }
    }
    summary.bold = bold.All();
    summary.italic = italic.All();
    summary.underline = underline.All();

    zelcore::geom::RectT<int> placedBlocks;
    for (const detail::ParagraphRef& ref : detail::DistinctParagraphs(records)) {
        const zelcaptioning::CaptionTextParagraph& paragraph = *ref.paragraph;
        const zelcaptioning::ParagraphStyleAttributes style =
            paragraph.GetParagraphStyleAttributes();
        const std::int32_t alignment = style.GetTextAlignment();
        if (summary.alignment == StyleSummary::kAlignmentNone) {
            summary.alignment = alignment;
        } else if (summary.alignment != alignment) {
            summary.alignment = StyleSummary::kAlignmentMixed;
        }
        const zelcaptioning::Position position = paragraph.GetCaptionPosition();
        if (position != zelcaptioning::kPosition_Uninitialized) {
            const zelcore::geom::RectT<int> block = BlockOf(paragraph);
            if (summary.alignment != StyleSummary::kAlignmentMixed && !placedBlocks.IsEmpty() &&
                !Lined(summary.alignment, block, placedBlocks)) {
                summary.alignment = StyleSummary::kAlignmentMixed;
            }
            placedBlocks = placedBlocks.Union(block);
        }
        if (summary.anchor == zelcaptioning::kAnchorID_None) {
            summary.anchor = style.GetAnchorID();
            summary.position = position;
        } else if (summary.anchor != StyleSummary::kAnchorMixed &&
                   style.GetAnchorID() != summary.anchor) {
            summary.anchor = StyleSummary::kAnchorMixed;
        }
    }
    return summary;
}

std::ostream& operator<<(std::ostream& os, const StyleSummary& s) {
    os << "StyleSummary{" << (s.bold ? "bold " : "") << (s.italic ? "italic " : "")
       << (s.underline ? "underline " : "") << s.fontName << ' ' << s.fontSize
       << "pt text=" << s.textColor << (s.textColorMixed ? "(mixed)" : "")
       << " back=" << s.backgroundColor << (s.backgroundColorMixed ? "(mixed)" : "")
       << " edge=" << s.edgeColor << (s.edgeColorMixed ? "(mixed)" : "") << '/' << s.edgeWidth
       << " align=" << s.alignment << " anchor=" << s.anchor << " at " << s.position << '}';
    return os;
}

} // namespace caption_editor
