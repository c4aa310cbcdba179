#include "CaptionsItemList.h"

#include <algorithm>
#include <unordered_map>

namespace HandlerCaptions {

std::int32_t CaptionsItemList::IndexOf(const zelcaptioning::Caption* caption) const {
    if (!caption) {
        return -1;
    }
    // Rows are in begin order: start at the caption's begin and look both ways
    // among equal begins, falling back to a full walk for a retimed caption.
    const zelmediatypes::TickTime begin = caption->GetBeginTime();
    auto at = std::lower_bound(rows_.begin(), rows_.end(), begin, [](const Row& row, auto time) {
        return row->GetCaption()->GetBeginTime() < time;
    });
    for (auto it = at; it != rows_.end() && it->get()->GetCaption()->GetBeginTime() == begin;
         ++it) {
        if (it->get()->GetCaption().get() == caption) {
            return static_cast<std::int32_t>(it - rows_.begin());
        }
    }
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        if (rows_[i]->GetCaption().get() == caption) {
            return static_cast<std::int32_t>(i);
        }
    }
    return -1;
}

std::int32_t CaptionsItemList::InsertionIndexFor(zelmediatypes::TickTime begin) const {
    auto at = std::upper_bound(rows_.begin(), rows_.end(), begin, [](auto time, const Row& row) {
        return time < row->GetCaption()->GetBeginTime();
    });
    return static_cast<std::int32_t>(at - rows_.begin());
}

void CaptionsItemList::Insert(std::int32_t index, Row row) {
    const auto at = static_cast<std::size_t>(std::clamp(index, 0, GetCount()));
    rows_.insert(rows_.begin() + static_cast<std::ptrdiff_t>(at), std::move(row));
    if (current_ >= static_cast<std::int32_t>(at)) {
        ++current_;
    }
}

void CaptionsItemList::Remove(std::int32_t index) {
    if (index < 0 || index >= GetCount()) {
        return;
    }
    rows_.erase(rows_.begin() + index);
    if (current_ > index) {
        --current_;
    } else if (current_ == index) {
        current_ = Clamp(index);
        selectionStart_ = 0;
        selectionEnd_ = -1;
    }
}

void CaptionsItemList::Clear() {
    rows_.clear();
    current_ = -1;
    selectionStart_ = 0;
    selectionEnd_ = 0;
}

std::int32_t CaptionsItemList::Clamp(std::int32_t index) const {
    if (rows_.empty()) {
        return -1;
    }
    return std::clamp(index, 0, GetCount() - 1);
}

CaptionsItem* CaptionsItemList::GetCurrentRow() const {
    return current_ >= 0 && current_ < GetCount() ? At(current_).get() : nullptr;
}

zelcaptioning::CaptionPtr CaptionsItemList::GetCurrentCaption() const {
    const CaptionsItem* row = GetCurrentRow();
    return row ? row->GetCaption() : zelcaptioning::CaptionPtr();
}

std::int32_t CaptionsItemList::FindAndSelect(const zelcaptioning::Caption* caption) {
    current_ = IndexOf(caption);
    selectionStart_ = 0;
    selectionEnd_ = current_ >= 0 ? -1 : 0;
    return current_;
}

std::int32_t CaptionsItemList::Resort(std::int32_t index, zelmediatypes::TickTime oldBegin) {
    if (index < 0 || index >= GetCount()) {
        return index;
    }
    const Row row = At(index);
    const zelmediatypes::TickTime begin = row->GetCaption()->GetBeginTime();
    std::int32_t target = index;
    if (begin > oldBegin) {
        target = index + 1;
        while (target < GetCount() && At(target)->GetCaption()->GetBeginTime() <= begin) {
            ++target;
        }
        --target; // the row itself leaves its old place first
    } else if (begin < oldBegin) {
        target = index - 1;
        while (target >= 0 && At(target)->GetCaption()->GetBeginTime() >= begin) {
            --target;
        }
        ++target;
    }
    if (target == index) {
        return index;
    }
    rows_.erase(rows_.begin() + index);
    rows_.insert(rows_.begin() + target, row);
    if (current_ == index) {
        current_ = target;
    } else {
        if (current_ > index) {
            --current_;
        }
        if (current_ >= target) {
            ++current_;
        }
    }
    return target;
}

void CaptionsItemList::ApplyMoves(const std::vector<BE::CaptionMove>& moves) {
    if (moves.empty()) {
        return;
    }
    const CaptionsItem* currentRow = GetCurrentRow();
    std::stable_sort(rows_.begin(), rows_.end(), [](const Row& a, const Row& b) {
        return a->GetCaption()->GetBeginTime() < b->GetCaption()->GetBeginTime();
    });
    if (currentRow) {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            if (rows_[i].get() == currentRow) {
                current_ = static_cast<std::int32_t>(i);
            }
        }
    }
}

void CaptionsItemList::GetSelectionRange(std::int64_t& start, std::int64_t& end) const {
    start = selectionStart_;
    end = selectionEnd_;
}

void CaptionsItemList::SetSelectionRange(std::int64_t start, std::int64_t end) {
    selectionStart_ = start;
    selectionEnd_ = end;
}

bool CaptionsItemList::TakeCaretOrSelectionChange() {
    std::int64_t start = selectionStart_;
    std::int64_t end = selectionEnd_;
    if (const CaptionsItem* row = GetCurrentRow(); row && row->TextHasFocus()) {
        row->GetEngineSelection(start, end);
        selectionStart_ = start;
        selectionEnd_ = end;
    }
    const bool changed = seenRow_ != current_ || seenStart_ != start || seenEnd_ != end;
    seenRow_ = current_;
    seenStart_ = start;
    seenEnd_ = end;
    return changed;
}

void CaptionsItemList::ResetCaretState() {
    selectionStart_ = 0;
    selectionEnd_ = current_ >= 0 ? -1 : 0;
}

bool CaptionsItemList::CurrentRowHasFocus() const {
    const CaptionsItem* row = GetCurrentRow();
    return row && row->TextHasFocus();
}

void CaptionsItemList::StartTextEditing(std::int64_t start, std::int64_t end) {
    if (CaptionsItem* row = GetCurrentRow()) {
        selectionStart_ = start;
        selectionEnd_ = end;
        row->StartTextEditing(start, end);
    }
}

} // namespace HandlerCaptions
