#pragma once

#include "common/CaptionTextBuilder.h"
#include "scc/Cea608Code.h"
#include "zelcaptioning/CaptionTextParagraph.h"

#include <array>
#include <utility>
#include <vector>

namespace captionformats::cea608 {

// One of a decoder's two caption memories: 15 rows of character cells. A row
// may run past column 31 (a file that overfills a row keeps its text; the
// reader reports it).
class CaptionMemory {
public:
    static constexpr int kRows = 15;
    static constexpr int kColumns = 32;

    // All the style a CEA-608 cell carries, by its codes. It is four bytes,
    // trivially copied and compared, as the decoder writes one for every
    // character and a row is cut into runs by comparing them.
    struct CellStyle {
        std::uint8_t textColor = 0;                       // a colour code (ColorOfCode), white
        std::uint8_t background = kTransparentBackground; // BackgroundOfCode
        bool italic = false;
        bool underline = false;

        friend bool operator==(const CellStyle&, const CellStyle&) = default;
        // The span attributes of this style: the defaults but for these fields.
        zelcaptioning::TextSpanAttributes Attributes() const;
    };

    struct Cell {
        char32_t character = U' ';
        CellStyle style;
    };

    void Write(int row, int column, const Cell& cell) {
        // Text is written left to right: the usual place is past the row's end.
        if (row >= 1 && row <= kRows && column >= 0) {
            Row& cells = rows_[static_cast<std::size_t>(row)];
            if (cells.empty() || cells.back().first < column) {
                cells.push_back({column, cell});
            } else {
                WriteBefore(cells, column, cell);
            }
        }
    }
    void Erase(int row, int column);
    void EraseFrom(int row, int column);
    void EraseRow(int row);
    void Clear();
    bool IsEmpty() const;
    // Moves rows first..last up by one row; `last` becomes empty. Rows outside
    // first..last are erased.
    void RollUp(int firstRow, int lastRow);
    // Moves the rows of a roll-up window so that its base row becomes `newBase`.
    void MoveWindow(int oldBase, int newBase, int depth);

    // One paragraph per row that holds anything, top to bottom, placed on the
    // 32 × 15 grid at the row's first cell (x = column / 32, y = (row - 1) / 15),
    // free and left-aligned; gaps inside a row become spaces.
    std::vector<zelcaptioning::CaptionTextParagraphPtr> ToParagraphs() const;
    // The same rows as lines of `text` (which must be empty), for a writer
    // that takes them without the caption model; returns their count. Each
    // line's paragraph style is LineStyle().
    std::size_t AppendLines(CaptionTextBuilder& text) const;
    static zelcaptioning::ParagraphStyleAttributes LineStyle();

private:
    // A row's written cells by column, in column order. Rows keep their
    // storage when erased, so a decoder stops allocating once warmed up.
    using Row = std::vector<std::pair<int, Cell>>;
    static Row::iterator CellAt(Row& row, int column);
    // Writes a cell at or before the last written one.
    static void WriteBefore(Row& row, int column, const Cell& cell);
    static void AppendRow(const Row& row, CaptionTextBuilder& text);

    std::array<Row, kRows + 1> rows_; // index 0 unused
};

} // namespace captionformats::cea608
