#include "scc/Cea608Screen.h"

#include "common/CaptionTextBuilder.h"
#include "common/TextInput.h"

#include <algorithm>
#include <bit>

namespace captionformats::cea608 {

using namespace zelcaptioning;

namespace {
bool IsRow(int row) {
    return row >= 1 && row <= CaptionMemory::kRows;
}
} // namespace

CaptionMemory::Beyond::iterator CaptionMemory::CellBeyond(Beyond& cells, int column) {
    return std::lower_bound(cells.begin(), cells.end(), column,
                            [](const auto& cell, int at) { return cell.first < at; });
}

void CaptionMemory::WriteBeyond(Row& row, int column, const Cell& cell) {
    // Text is written left to right: the usual place is the end.
    Beyond& cells = row.beyond;
    const auto at =
        cells.empty() || cells.back().first < column ? cells.end() : CellBeyond(cells, column);
    if (at != cells.end() && at->first == column) {
        at->second = cell;
    } else {
        cells.insert(at, {column, cell});
    }
}

int CaptionMemory::Row::FirstColumn() const {
    return written != 0 ? std::countr_zero(written) : beyond.front().first;
}

void CaptionMemory::Erase(int row, int column) {
    if (IsRow(row) && column >= 0) {
        Row& cells = rows_[static_cast<std::size_t>(row)];
        if (column < kColumns) {
            cells.written &= ~(1U << column);
            return;
        }
        const auto at = CellBeyond(cells.beyond, column);
        if (at != cells.beyond.end() && at->first == column) {
            cells.beyond.erase(at);
        }
    }
}

void CaptionMemory::EraseFrom(int row, int column) {
    if (IsRow(row)) {
        Row& cells = rows_[static_cast<std::size_t>(row)];
        if (column < kColumns) {
            cells.written &= column <= 0 ? 0U : ~0U >> (kColumns - column);
            cells.beyond.clear();
        } else {
            cells.beyond.erase(CellBeyond(cells.beyond, column), cells.beyond.end());
        }
    }
}

void CaptionMemory::EraseRow(int row) {
    if (IsRow(row)) {
        rows_[static_cast<std::size_t>(row)].Clear();
    }
}

void CaptionMemory::Clear() {
    for (std::uint32_t rows = touched_; rows != 0; rows &= rows - 1) {
        rows_[static_cast<std::size_t>(std::countr_zero(rows))].Clear();
    }
    touched_ = 0;
}

bool CaptionMemory::IsEmpty() const {
    for (std::uint32_t rows = touched_; rows != 0; rows &= rows - 1) {
        if (!rows_[static_cast<std::size_t>(std::countr_zero(rows))].IsEmpty()) {
            return false;
        }
    }
    return true;
}

void CaptionMemory::MarkRowsHoldingCells() {
    touched_ = 0;
    for (int row = 1; row <= kRows; ++row) {
        if (!rows_[static_cast<std::size_t>(row)].IsEmpty()) {
            touched_ |= 1U << row;
        }
    }
}

void CaptionMemory::RollUp(int firstRow, int lastRow) {
    for (int row = 1; row <= kRows; ++row) {
        auto& cells = rows_[static_cast<std::size_t>(row)];
        if (row < firstRow || row >= lastRow) {
            cells.Clear();
        }
        if (row >= firstRow && row < lastRow) {
            std::swap(cells, rows_[static_cast<std::size_t>(row + 1)]);
            rows_[static_cast<std::size_t>(row + 1)].Clear();
        }
    }
    MarkRowsHoldingCells();
}

void CaptionMemory::MoveWindow(int oldBase, int newBase, int depth) {
    std::array<Row, kRows + 1> moved;
    for (int offset = 0; offset < depth; ++offset) {
        const int from = oldBase - offset;
        const int to = newBase - offset;
        if (IsRow(from) && IsRow(to)) {
            std::swap(moved[static_cast<std::size_t>(to)], rows_[static_cast<std::size_t>(from)]);
        }
    }
    rows_.swap(moved);
    MarkRowsHoldingCells();
}

ParagraphStyleAttributes CaptionMemory::LineStyle() {
    ParagraphStyleAttributes style;
    style.SetAnchorID(kAnchorID_Free);
    style.SetTextAlignment(kTextAlignment_Left);
    return style;
}

TextSpanAttributes CaptionMemory::CellStyle::Attributes() const {
    TextSpanAttributes attributes;
    attributes.textColor = ColorOfCode(textColor);
    attributes.backgroundColor = BackgroundOfCode(background);
    attributes.SetItalicized(italic);
    attributes.SetUnderlined(underline);
    return attributes;
}

namespace {

// Gathers a row's text cell by cell, in column order, as a line of `lines`:
// cells of one style go as one run, and the spaces of a gap take the style of
// the cell after it. The text goes through a buffer, flushed when full.
class RowText {
public:
    RowText(CaptionMemory::Lines& lines, int firstColumn, CaptionMemory::CellStyle firstStyle)
        : lines_(lines)
        , nextColumn_(firstColumn)
        , style_(firstStyle) {}

    // The cells of the columns marked in `written`. The usual cell, ASCII
    // next to the one before it in its style, is added right here, with the
    // state in locals (stores to the buffer could otherwise alias members).
    void AddPlaced(const std::array<CaptionMemory::Cell, CaptionMemory::kColumns>& cells,
                   std::uint32_t written) {
        // The columns in place never fill the buffer.
        static_assert(kBuffer >= CaptionMemory::kColumns * kWidest);
        std::size_t used = used_;
        int next = nextColumn_;
        CaptionMemory::CellStyle style = style_;
        for (; written != 0; written &= written - 1) {
            const int column = std::countr_zero(written);
            const CaptionMemory::Cell& cell = cells[static_cast<std::size_t>(column)];
            if (column == next && cell.style == style && cell.character < 0x80) {
                buffer_[used++] = static_cast<char>(cell.character);
                ++next;
                continue;
            }
            used_ = used;
            nextColumn_ = next;
            AddAny(column, cell);
            used = used_;
            next = nextColumn_;
            style = style_;
        }
        used_ = used;
        nextColumn_ = next;
    }

    // Any cell in its place in the row.
    void AddAny(int column, const CaptionMemory::Cell& cell) {
        if (!(cell.style == style_)) {
            Flush();
            style_ = cell.style;
        }
        for (int gap = column - nextColumn_; gap > 0; --gap) {
            if (used_ == kBuffer) {
                Flush();
            }
            buffer_[used_++] = ' ';
        }
        if (used_ + kWidest > kBuffer) {
            Flush();
        }
        if (cell.character < 0x80) {
            buffer_[used_++] = static_cast<char>(cell.character);
        } else {
            std::string utf8; // short enough to stay in the string itself
            AppendUtf8(utf8, cell.character);
            utf8.copy(buffer_.data() + used_, utf8.size());
            used_ += utf8.size();
        }
        nextColumn_ = column + 1;
    }

    // Ends the buffered text's run, joined to the run before it in the line
    // when that has the same style.
    void Flush() {
        if (used_ == 0) {
            return;
        }
        lines_.text.append(buffer_.data(), used_);
        used_ = 0;
        if (lines_.runs.size() > lineStart_ && lines_.runs.back().style == style_) {
            lines_.runs.back().end = lines_.text.size();
        } else {
            lines_.runs.push_back({lines_.text.size(), style_});
        }
    }

    void EndLine() {
        Flush();
        lines_.lineEnds.push_back(lines_.runs.size());
    }

private:
    static constexpr std::size_t kBuffer = 256; // a whole row of the widest characters
    static constexpr std::size_t kWidest = 4;   // bytes of UTF-8

    CaptionMemory::Lines& lines_;
    const std::size_t lineStart_ = lines_.runs.size();
    int nextColumn_;
    CaptionMemory::CellStyle style_;
    std::array<char, kBuffer> buffer_;
    std::size_t used_ = 0;
};

} // namespace

void CaptionMemory::AppendRow(const Row& row, Lines& lines) {
    const int first = row.FirstColumn();
    RowText gathered(lines, first,
                     first < kColumns ? row.cells[static_cast<std::size_t>(first)].style
                                      : row.beyond.front().second.style);
    gathered.AddPlaced(row.cells, row.written);
    for (const auto& [column, cell] : row.beyond) {
        gathered.AddAny(column, cell);
    }
    gathered.EndLine();
}

std::vector<CaptionTextParagraphPtr> CaptionMemory::ToParagraphs() const {
    std::vector<CaptionTextParagraphPtr> paragraphs;
    const ParagraphStyleAttributes style = LineStyle();
    CaptionTextBuilder builder;
    Lines lines;
    for (int row = 1; row <= kRows; ++row) {
        const Row& cells = rows_[static_cast<std::size_t>(row)];
        if (cells.IsEmpty()) {
            continue;
        }
        lines.Clear();
        AppendRow(cells, lines);
        std::size_t start = 0;
        for (const Lines::Run& run : lines.runs) {
            builder.Append(std::string_view(lines.text).substr(start, run.end - start),
                           run.style.Attributes());
            start = run.end;
        }
        CaptionTextParagraphPtr paragraph = builder.TakeParagraphs(style).front();
        paragraph->SetCaptionPosition(
            Position(Rational(cells.FirstColumn(), kColumns), Rational(row - 1, kRows)));
        paragraphs.push_back(paragraph);
    }
    return paragraphs;
}

void CaptionMemory::AppendLines(Lines& lines) const {
    for (std::uint32_t rows = touched_; rows != 0; rows &= rows - 1) {
        const Row& cells = rows_[static_cast<std::size_t>(std::countr_zero(rows))];
        if (!cells.IsEmpty()) {
            AppendRow(cells, lines);
        }
    }
}

} // namespace captionformats::cea608
