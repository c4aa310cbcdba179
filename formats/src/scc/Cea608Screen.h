#pragma once

#include "common/CaptionTextBuilder.h"
#include "scc/Cea608Characters.h"
#include "scc/Cea608Code.h"
#include "zelcaptioning/CaptionTextParagraph.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
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
        std::uint8_t textColor = 0;                       // ColorOfCode; white
        std::uint8_t background = kTransparentBackground; // BackgroundOfCode
        bool italic = false;
        bool underline = false;

        // Compared as one word.
        friend bool operator==(const CellStyle& a, const CellStyle& b) {
            return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
        }
        // The span attributes of this style: the defaults but for these fields.
        zelcaptioning::TextSpanAttributes Attributes() const;
    };
    static_assert(sizeof(CellStyle) == sizeof(std::uint32_t));

    struct Cell {
        char32_t character = U' ';
        CellStyle style;
    };

    // The character and its style come apart so that writing them stores
    // each once, the way the decoder holds them.
    void Write(int row, int column, char32_t character, CellStyle style) {
        if (row >= 1 && row <= kRows && column >= 0) {
            Row& cells = rows_[static_cast<std::size_t>(row)];
            if (column < kColumns) {
                cells.cells[static_cast<std::size_t>(column)] = {character, style};
                cells.written |= 1U << column;
                touched_ |= 1U << row;
            } else {
                WriteBeyond(cells, column, {character, style});
                touched_ |= 1U << row;
            }
        }
    }
    // Writes the basic characters of `pairs` (bytes with parity bits, first
    // byte high) from `column` of `row` on, moving `column` past them, as long
    // as a pair is two basic characters (BasicCharacterWithParity) or one and
    // padding (0x80) and starts before the last column; returns how many
    // pairs it wrote. This is the bulk of any file's traffic.
    std::size_t WriteBasic(int row, int& column, std::span<const std::uint16_t> pairs,
                           CellStyle style) {
        if (row < 1 || row > kRows || column < 0) {
            return 0;
        }
        Row& cells = rows_[static_cast<std::size_t>(row)];
        const int start = column;
        int at = column;
        std::size_t count = 0;
        const std::uint64_t styled = std::uint64_t{std::bit_cast<std::uint32_t>(style)} << 32;
        for (; count < pairs.size() && at + 1 < kColumns; ++count) {
            const std::uint16_t pair = pairs[count];
            const char32_t first = BasicCharacterWithParity(static_cast<std::uint8_t>(pair >> 8));
            const char32_t second = BasicCharacterWithParity(static_cast<std::uint8_t>(pair));
            const bool padded = (pair & 0xFF) == 0x80;
            if (first == 0 || (second == 0 && !padded)) {
                break;
            }
            StoreCell(cells.cells[static_cast<std::size_t>(at)], styled | first);
            if (padded) {
                at += 1;
            } else {
                StoreCell(cells.cells[static_cast<std::size_t>(at) + 1], styled | second);
                at += 2;
            }
        }
        if (count > 0) {
            // The cells written lie side by side, from `start` to `at`.
            cells.written |=
                static_cast<std::uint32_t>(((std::uint64_t{1} << (at - start)) - 1) << start);
            touched_ |= 1U << row;
            column = at;
        }
        return count;
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

    // For a writer that takes the rows' cells as they lie: calls
    // `visit(written, cells, beyond)` for each row that holds cells, top to
    // bottom, `written` marking the columns of `cells` in use and `beyond`
    // telling whether cells lie past the last column, until `visit` returns
    // false; returns whether it saw every row.
    template <typename Visit> bool VisitRows(const Visit& visit) const {
        for (std::uint32_t rows = touched_; rows != 0; rows &= rows - 1) {
            const Row& row = rows_[static_cast<std::size_t>(std::countr_zero(rows))];
            if (!row.IsEmpty() && !visit(row.written, row.cells, !row.beyond.empty())) {
                return false;
            }
        }
        return true;
    }
    // At least the number of rows that hold cells. Counted bit by bit: a
    // screen marks few rows, and std::popcount is a library call on the
    // x86-64 baseline.
    int RowsInUseAtMost() const {
        int rows = 0;
        for (std::uint32_t marked = touched_; marked != 0; marked &= marked - 1) {
            ++rows;
        }
        return rows;
    }

    // A caption's rows as lines of UTF-8 text in runs of one cell style, for
    // a writer that takes them without the caption model. Kept from caption
    // to caption, it keeps its storage.
    struct Lines {
        struct Run {
            std::size_t end; // in `text`; the run starts where the one before ends
            CellStyle style;
        };
        std::string text;
        std::vector<Run> runs;             // adjacent runs of a line differ in style
        std::vector<std::size_t> lineEnds; // the end of each line in `runs`

        void Clear() {
            text.clear();
            runs.clear();
            lineEnds.clear();
        }
    };

    // One paragraph per row that holds anything, top to bottom, placed on the
    // 32 × 15 grid at the row's first cell (x = column / 32, y = (row - 1) / 15),
    // free and left-aligned; gaps inside a row become spaces.
    std::vector<zelcaptioning::CaptionTextParagraphPtr> ToParagraphs() const;
    // The same rows, as the paragraphs hold them, appended to `lines`. Each
    // line's paragraph style is LineStyle().
    void AppendLines(Lines& lines) const;
    static zelcaptioning::ParagraphStyleAttributes LineStyle();

private:
    // A row's cells: those of the 32 columns in place, marked in `written`,
    // and those past the last column (rare) by column, in column order. Rows
    // keep their storage when erased, so a decoder stops allocating once
    // warmed up.
    struct Row {
        std::uint32_t written = 0; // bit c: column c holds a cell
        std::array<Cell, kColumns> cells;
        std::vector<std::pair<int, Cell>> beyond;

        bool IsEmpty() const { return written == 0 && beyond.empty(); }
        int FirstColumn() const;
        void Clear() {
            written = 0;
            beyond.clear();
        }
    };
    // Stores a cell given as its character with its style's bits above them:
    // one store where member-wise copies would take three.
    static void StoreCell(Cell& cell, std::uint64_t characterAndStyle) {
        static_assert(sizeof(Cell) == sizeof(std::uint64_t) && offsetof(Cell, style) == 4 &&
                      std::endian::native == std::endian::little);
        std::memcpy(static_cast<void*>(&cell), &characterAndStyle, sizeof cell);
    }
    using Beyond = std::vector<std::pair<int, Cell>>;
    static Beyond::iterator CellBeyond(Beyond& cells, int column);
    static void WriteBeyond(Row& row, int column, const Cell& cell);
    static void AppendRow(const Row& row, Lines& lines);

    // Marks exactly the rows that hold cells, as after a roll-up.
    void MarkRowsHoldingCells();

    std::array<Row, kRows + 1> rows_; // index 0 unused
    // Bit r is set for every row r that holds cells (and maybe for rows
    // erased since), so that clearing and testing touch only those.
    std::uint32_t touched_ = 0;
};

} // namespace captionformats::cea608
