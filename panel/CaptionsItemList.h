#pragma once

#include "BE/CaptionMessages.h"
#include "CaptionsItem.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace HandlerCaptions {

// The pane's rows in caption begin-time order, the current row, and the text
// selection range of the current row in engine positions ((0, -1): the whole
// text; (0, 0): nothing).
class CaptionsItemList {
public:
    using Row = std::shared_ptr<CaptionsItem>;

    std::int32_t GetCount() const { return static_cast<std::int32_t>(rows_.size()); }
    bool IsEmpty() const { return rows_.empty(); }
    const Row& At(std::int32_t index) const { return rows_[static_cast<std::size_t>(index)]; }
    // The index of the caption's row; -1 when it has none.
    std::int32_t IndexOf(const zelcaptioning::Caption* caption) const;
    // The index where a row of a caption beginning at `begin` goes: after the
    // rows beginning at or before it.
    std::int32_t InsertionIndexFor(zelmediatypes::TickTime begin) const;

    // Inserts before `index` (appends past the end); the current row stays the same row.
    void Insert(std::int32_t index, Row row);
    // Removes the row; when it was current, the row that takes its place (or
    // the new last row) becomes current, none when the list empties.
    void Remove(std::int32_t index);
    void Clear();

    // The index clamped into the rows; -1 for an empty list.
    std::int32_t Clamp(std::int32_t index) const;
    std::int32_t GetCurrentIndex() const { return current_; }
    void SetCurrentIndex(std::int32_t index) { current_ = index; }
    CaptionsItem* GetCurrentRow() const;
    zelcaptioning::CaptionPtr GetCurrentCaption() const;
    // Makes the caption's row current with its whole text selected; without a
    // row, none is current and nothing selected. Returns the index.
    std::int32_t FindAndSelect(const zelcaptioning::Caption* caption);

    // Moves the row at `index` to its place after its caption's begin changed
    // (later: after equal begins; earlier: before them). Returns the new index.
    std::int32_t Resort(std::int32_t index, zelmediatypes::TickTime oldBegin);
    // Reorders the rows of moved captions to the stream's new order.
    void ApplyMoves(const std::vector<BE::CaptionMove>& moves);

    // The selection range of the current row.
    void GetSelectionRange(std::int64_t& start, std::int64_t& end) const;
    void SetSelectionRange(std::int64_t start, std::int64_t end);
    // Reads the current row's control selection; true when it (or the current
    // row) changed since the last look.
    bool TakeCaretOrSelectionChange();
    void ResetCaretState();

    // Text editing of the current row.
    bool CurrentRowHasFocus() const;
    void StartTextEditing(std::int64_t start, std::int64_t end);

private:
    std::vector<Row> rows_;
    std::int32_t current_ = -1;
    std::int64_t selectionStart_ = 0;
    std::int64_t selectionEnd_ = -1;
    // What TakeCaretOrSelectionChange last saw.
    std::int32_t seenRow_ = -1;
    std::int64_t seenStart_ = 0;
    std::int64_t seenEnd_ = 0;
};

} // namespace HandlerCaptions
