#include "scc/Cea608Screen.h"

#include "common/CaptionTextBuilder.h"
#include "common/TextInput.h"

#include <algorithm>

namespace captionformats::cea608 {

using namespace zelcaptioning;

namespace {
bool IsRow(int row) {
    return row >= 1 && row <= CaptionMemory::kRows;
}
} // namespace

CaptionMemory::Row::iterator CaptionMemory::CellAt(Row& row, int column) {
    // Text is written left to right: the usual place is the end.
    if (row.empty() || row.back().first < column) {
        return row.end();
    }
    return std::lower_bound(row.begin(), row.end(), column,
                            [](const auto& cell, int at) { return cell.first < at; });
}

void CaptionMemory::WriteBefore(Row& row, int column, const Cell& cell) {
    const auto at = CellAt(row, column);
    if (at != row.end() && at->first == column) {
        at->second = cell;
    } else {
        row.insert(at, {column, cell});
    }
}

void CaptionMemory::Erase(int row, int column) {
    if (IsRow(row)) {
        Row& cells = rows_[static_cast<std::size_t>(row)];
        const auto at = CellAt(cells, column);
        if (at != cells.end() && at->first == column) {
            cells.erase(at);
        }
    }
}

void CaptionMemory::EraseFrom(int row, int column) {
    if (IsRow(row)) {
        Row& cells = rows_[static_cast<std::size_t>(row)];
        cells.erase(CellAt(cells, column), cells.end());
    }
}

void CaptionMemory::EraseRow(int row) {
    if (IsRow(row)) {
        rows_[static_cast<std::size_t>(row)].clear();
    }
}

void CaptionMemory::Clear() {
    for (auto& row : rows_) {
        row.clear();
    }
}

bool CaptionMemory::IsEmpty() const {
    for (const auto& row : rows_) {
        if (!row.empty()) {
            return false;
        }
    }
    return true;
}

void CaptionMemory::RollUp(int firstRow, int lastRow) {
    for (int row = 1; row <= kRows; ++row) {
        auto& cells = rows_[static_cast<std::size_t>(row)];
        if (row < firstRow || row >= lastRow) {
            cells.clear();
        }
        if (row >= firstRow && row < lastRow) {
            cells.swap(rows_[static_cast<std::size_t>(row + 1)]);
            rows_[static_cast<std::size_t>(row + 1)].clear();
        }
    }
}

void CaptionMemory::MoveWindow(int oldBase, int newBase, int depth) {
    std::array<Row, kRows + 1> moved;
    for (int offset = 0; offset < depth; ++offset) {
        const int from = oldBase - offset;
        const int to = newBase - offset;
        if (IsRow(from) && IsRow(to)) {
            moved[static_cast<std::size_t>(to)].swap(rows_[static_cast<std::size_t>(from)]);
        }
    }
    rows_.swap(moved);
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

// Cells of one style go to the builder as one run; the spaces of a gap take
// the style of the cell after it. A run longer than the buffer goes in parts,
// which the builder joins again.
void CaptionMemory::AppendRow(const Row& row, CaptionTextBuilder& text) {
    // Room for a whole row of the widest characters and a gap before each.
    constexpr std::size_t kBuffer = 256;
    constexpr std::size_t kWidest = 4;
    char buffer[kBuffer];
    std::size_t used = 0;
    int nextColumn = row.front().first;
    CellStyle runStyle = row.front().second.style;
    for (const auto& [column, cell] : row) {
        if (!(cell.style == runStyle)) {
            text.Append({buffer, used}, runStyle.Attributes());
            used = 0;
            runStyle = cell.style;
        }
        for (int gap = column - nextColumn; gap > 0; --gap) {
            if (used == kBuffer) {
                text.Append({buffer, used}, runStyle.Attributes());
                used = 0;
            }
            buffer[used++] = ' ';
        }
        if (used + kWidest > kBuffer) {
            text.Append({buffer, used}, runStyle.Attributes());
            used = 0;
        }
        if (cell.character < 0x80) {
            buffer[used++] = static_cast<char>(cell.character);
        } else {
            std::string utf8; // short enough to stay in the string itself
            AppendUtf8(utf8, cell.character);
            utf8.copy(buffer + used, utf8.size());
            used += utf8.size();
        }
        nextColumn = column + 1;
    }
    text.Append({buffer, used}, runStyle.Attributes());
}

std::vector<CaptionTextParagraphPtr> CaptionMemory::ToParagraphs() const {
    std::vector<CaptionTextParagraphPtr> paragraphs;
    const ParagraphStyleAttributes style = LineStyle();
    CaptionTextBuilder builder;
    for (int row = 1; row <= kRows; ++row) {
        const Row& cells = rows_[static_cast<std::size_t>(row)];
        if (cells.empty()) {
            continue;
        }
        AppendRow(cells, builder);
        CaptionTextParagraphPtr paragraph = builder.TakeParagraphs(style).front();
        paragraph->SetCaptionPosition(
            Position(Rational(cells.front().first, kColumns), Rational(row - 1, kRows)));
        paragraphs.push_back(paragraph);
    }
    return paragraphs;
}

std::size_t CaptionMemory::AppendLines(CaptionTextBuilder& text) const {
    std::size_t lines = 0;
    for (int row = 1; row <= kRows; ++row) {
        const Row& cells = rows_[static_cast<std::size_t>(row)];
        if (!cells.empty()) {
            if (lines++ > 0) {
                text.BreakLine();
            }
            AppendRow(cells, text);
        }
    }
    return lines;
}

} // namespace captionformats::cea608
