#pragma once

#include "caption_editor/StyleSummary.h"
#include "zelcaptioning/Caption.h"

#include <cstdint>

namespace caption_editor {

// Edits one caption on behalf of the caption pane. It keeps three captions:
// the host caption it was handed (never changed), a saved deep copy of it, and
// a working deep copy that every operation changes in place. Positions are flat
// offsets over all paragraphs, each paragraph taking its text length plus one
// for its break. The engine reports no errors: positions past the end touch
// nothing. Operations set the modified flag; the pane reads and clears it.
//
// Layout: with a caption area of positive width and height the engine works in
// pixel layout and asks the caption to lay its lines out; otherwise in grid
// layout, where y is a row of the stream's character grid (row / row count) and
// x a column (column / column count).
class CaptionTextEditor {
public:
    // The grid of a closed-caption stream when no other is given.
    static constexpr std::int32_t kDefaultColumnCount = 32;
    static constexpr std::int32_t kDefaultRowCount = 15;

    CaptionTextEditor() = default;
    CaptionTextEditor(const CaptionTextEditor&) = delete;
    CaptionTextEditor& operator=(const CaptionTextEditor&) = delete;
    virtual ~CaptionTextEditor() = default;

    // --- Life of an edit ---
    // Takes `caption` to edit (or none). Does nothing at all when `caption` is
    // the working copy itself. Otherwise stores the grid, sets the area to 0.8 of
    // width × height (truncated) and, with a caption, makes the saved and the
    // normalised working copies; without one releases all three captions.
    void SetCaption(const zelcaptioning::CaptionPtr& caption, std::int32_t columnCount,
                    std::int32_t rowCount, std::int32_t width, std::int32_t height);
    // SetCaption with no caption and then with the host caption, each time with
    // the stored grid and area; the area therefore shrinks to 0.64 of itself.
    void Reload();
    zelcaptioning::CaptionPtr GetCaption() const { return workingCopy_; }
    zelcaptioning::CaptionPtr GetSavedCaption() const { return savedCopy_; }
    zelcaptioning::CaptionPtr GetHostCaption() const { return hostCaption_; }
    bool IsModified() const { return modified_; }
    void SetModified(bool modified) { modified_ = modified; }
    // When modified, restores the working copy from the saved copy and returns true.
    bool Revert();

    std::int32_t GetCaptionAreaWidth() const { return areaWidth_; }
    std::int32_t GetCaptionAreaHeight() const { return areaHeight_; }
    bool IsPixelLayout() const { return pixelLayout_; }
    std::int32_t GetColumnCount() const { return columnCount_; }
    std::int32_t GetRowCount() const { return rowCount_; }

    // --- Text ---
    // Every line feed of `text` becomes a paragraph break; inserted text takes
    // the style of the span the caret selects.
    void InsertText(const zelcore::UTF16String& text, std::uint64_t position);
    // Removes `text`, which stands at `position`: its length is the count
    // removed, and its line feeds mark the paragraph breaks that go with it.
    void DeleteText(const zelcore::UTF16String& text, std::uint64_t position);
    void ReplaceText(const zelcore::UTF16String& oldText, const zelcore::UTF16String& newText,
                     std::uint64_t position);
    // Splits the paragraph at `position`; the new paragraph is placed by the
    // layout rules (see ParagraphLayout.cpp).
    void BreakParagraph(std::uint64_t position);
    // Removes the paragraph break at `position`, moving the next paragraph's
    // text to the end of this one.
    void JoinParagraphs(std::uint64_t position);

    // --- Character style over [start, end) (a caret restyles its span) ---
    void SetBold(bool bold, std::uint64_t start, std::uint64_t end);
    void SetItalic(bool italic, std::uint64_t start, std::uint64_t end);
    void SetUnderline(bool underline, std::uint64_t start, std::uint64_t end);
    void SetFontName(const zelcore::UTF16String& name, std::uint64_t start, std::uint64_t end);
    void SetFontSize(float size, std::uint64_t start, std::uint64_t end);
    // selector 0: text colour, 1: background, 2: edge (which also switches the
    // text edge on or off with the colour's alpha); any other changes nothing.
    void SetColor(const zelcaptioning::CaptioningColor& color, std::int32_t selector,
                  std::uint64_t start, std::uint64_t end);
    void SetEdgeWidth(float width, std::uint64_t start, std::uint64_t end);
    StyleSummary GetStyleSummary(std::uint64_t start, std::uint64_t end) const;

    // --- Layout ---
    // Grid layout only: into roll-up all lines move to the base row; out of it
    // they stack downwards ending on the base row.
    void SetCaptionType(zelcaptioning::CaptionType type);
    // Aligns the paragraphs of the range; in grid layout their lines also line
    // up on the left edges, centres or right edges of their common block.
    void SetAlignment(zelcaptioning::TextAlignmentType alignment, std::uint64_t start,
                      std::uint64_t end);
    // How far a's block stands right of b's by their common alignment; 0 in
    // pixel layout, for a missing paragraph or for differing alignments.
    std::int32_t GetAlignmentOffset(const zelcaptioning::CaptionTextParagraphPtr& a,
                                    const zelcaptioning::CaptionTextParagraphPtr& b) const;
    // Row primitives, grid layout only, for placed paragraphs; moved lines stay
    // on rows 0 to row count - 1.
    void SetParagraphRow(std::uint64_t index, std::int32_t row);
    void MoveParagraphByRows(std::uint64_t index, std::int32_t deltaRows);
    void MoveRows(std::int32_t firstRow, std::int32_t count, std::int32_t deltaRows);
    // Grid layout only: moves the placed paragraphs of the range as one block
    // by whole columns and rows (x + deltaColumns / column count and
    // y + deltaRows / row count, exact). The deltas are clamped so the block,
    // from its leftmost column to its furthest line end and from its top row to
    // its bottom row (an empty line counting at its column and row), stays
    // within columns 0 to the column count and rows 0 to row count - 1; a block
    // already over an edge may move back inwards but not further out. Every line
    // moves by the same amount, so the block keeps its shape. Sets the modified
    // flag only when something moved.
    void MoveBlock(std::int32_t deltaColumns, std::int32_t deltaRows, std::uint64_t start,
                   std::uint64_t end);
    // Pixel layout only (grid lines stand on whole columns and rows: MoveBlock
    // moves those): puts the block of the range where a person typed it, `x` and
    // `y` being fractions of the caption area, each clamped to 0.0 to 1.0 (NaN
    // as 0.0) and made exact by RationalFromDouble. Every paragraph of the range
    // takes the free anchor; the first stands at (x, y) and the others lose
    // their positions, because the caption keeps a placed free line where it is
    // but stacks an unplaced one directly below the line before it, at that
    // line's left edge. The caption is then laid out again. Sets the modified
    // flag when any position or anchor changed.
    void PlaceParagraphs(double x, double y, std::uint64_t start, std::uint64_t end);
    // Anchors the paragraphs of the range to a cell of the three-by-three grid
    // (outside the grid: no anchor) and lays the lines out again.
    void SetBlockAnchor(std::int32_t column, std::int32_t row, std::uint64_t start,
                        std::uint64_t end);

private:
    template <typename Has, typename Set>
    void ApplySpanStyle(std::uint64_t start, std::uint64_t end, Has has, Set set);
    void InsertParagraph(std::uint64_t index, const zelcaptioning::CaptionTextParagraphPtr& added,
                         const zelcaptioning::CaptionTextParagraphPtr& origin,
                         std::uint64_t originLengthBefore);
    void RemoveJoinedParagraph(std::uint64_t index);
    void MakeRoomOnRow(std::int32_t& row);
    std::int32_t RowOf(const zelcaptioning::CaptionTextParagraph& paragraph) const;
    zelcore::geom::RectT<int> BlockOf(const zelcaptioning::CaptionTextParagraph& paragraph) const;

    bool modified_ = false;
    zelcaptioning::CaptionPtr hostCaption_;
    zelcaptioning::CaptionPtr savedCopy_;
    zelcaptioning::CaptionPtr workingCopy_;
    bool pixelLayout_ = false;
    std::int32_t columnCount_ = kDefaultColumnCount;
    std::int32_t rowCount_ = kDefaultRowCount;
    std::int32_t areaWidth_ = 0;
    std::int32_t areaHeight_ = 0;
};

} // namespace caption_editor
