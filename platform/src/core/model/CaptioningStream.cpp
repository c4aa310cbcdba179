#include "CaptioningStream.h"

#include "MasterClip.h"
#include "ObjectSerial.h"
#include "zelcaptioning/StreamFormat.h"

#include <algorithm>
#include <limits>

namespace platform::core {

CaptioningStream::CaptioningStream(zelcaptioning::StreamFormat format)
    : format_(format)
    , station_(MakeUniqueStationID("BE.CaptioningStream")) {}

void* CaptioningStream::QueryInterface(std::string_view id) const noexcept {
    auto* self = const_cast<CaptioningStream*>(this);
    if (id == BE::ICaptioningStream::kInterfaceID || id == BE::IProjectItem::kInterfaceID) {
        return static_cast<BE::ICaptioningStream*>(self);
    }
    if (id == KSL::IStation::kInterfaceID) {
        return static_cast<KSL::IStation*>(self);
    }
    if (id == kImplementationID) {
        return self;
    }
    return nullptr;
}

BE::ProjectItemKind CaptioningStream::GetItemKind() const {
    return BE::ProjectItemKind::kCaptioningStream;
}

zelcore::UTF16String CaptioningStream::GetName() const {
    return {};
}

KSL::StationID CaptioningStream::GetStationID() const {
    return station_;
}

zelcaptioning::StreamFormat CaptioningStream::GetStreamFormat() const {
    return format_;
}

int CaptioningStream::GetGridRowCount() const {
    return zelcaptioning::IsOpenCaptions(format_) ? 0 : zelcaptioning::GetCaptionRows(format_);
}

int CaptioningStream::GetGridColumnCount() const {
    return zelcaptioning::IsOpenCaptions(format_)
               ? 0
               : zelcaptioning::GetCaptionColumns(format_, false);
}

KSL::InterfaceRef<BE::IMasterClip> CaptioningStream::GetMasterClip() const {
    return KSL::InterfaceRef<BE::IMasterClip>(owner_);
}

std::size_t CaptioningStream::GetCaptionCount() const {
    return entries_.size();
}

boost::intrusive_ptr<zelcaptioning::Caption> CaptioningStream::GetCaption(std::size_t index) const {
    return index < entries_.size() ? entries_[index].caption : nullptr;
}

std::optional<std::size_t>
CaptioningStream::FindStoredCaptionIndex(const zelcaptioning::Caption* caption) const {
    if (!caption) {
        return std::nullopt;
    }
    const zelmediatypes::TickTime begin = caption->GetBeginTime();
    for (std::size_t i = QueryLowerBound(begin);
         i < entries_.size() && entries_[i].beginTime == begin; ++i) {
        if (entries_[i].caption.get() == caption) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t>
CaptioningStream::FindCaptionIndex(const zelcaptioning::Caption* caption) const {
    if (auto index = FindStoredCaptionIndex(caption)) {
        return index;
    }
    // The caption's times were changed in place, outside the model.
    auto found = std::find_if(entries_.begin(), entries_.end(),
                              [caption](const Entry& e) { return e.caption.get() == caption; });
    if (found == entries_.end() || !caption) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - entries_.begin());
}

Project* CaptioningStream::GetProject() const {
    return owner_ ? owner_->GetProject() : nullptr;
}

namespace {

// A rebuild reads every entry once, so it waits until the searches made since
// the table went stale have paid about as much in binary searches.
std::size_t SearchesBeforeRebuild(std::size_t entryCount) {
    return entryCount / 16 + 1;
}

std::uint64_t Ticks(const zelmediatypes::TickTime& time) {
    return static_cast<std::uint64_t>(time.GetTicks());
}

} // namespace

CaptioningStream::Range CaptioningStream::BoundRange(const zelmediatypes::TickTime& time) const {
    if (!tableCurrent_) {
        return {0, entries_.size()};
    }
    if (entries_.empty() || time < entries_.front().beginTime) {
        return {0, 0};
    }
    if (entries_.back().beginTime < time) {
        return {entries_.size(), entries_.size()};
    }
    // Entries of earlier slots begin before the time, those of later slots after it.
    const std::uint64_t slot = (Ticks(time) - tableFirstBegin_) >> slotShift_;
    return {timeTable_[slot], timeTable_[slot + 1]};
}

std::size_t CaptioningStream::LowerBound(const zelmediatypes::TickTime& time) const {
    const Range range = BoundRange(time);
    const auto at = [this](std::size_t index) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return static_cast<std::size_t>(
        std::partition_point(at(range.first), at(range.last),
                             [&time](const Entry& e) { return e.beginTime < time; }) -
        entries_.begin());
}

std::size_t CaptioningStream::UpperBound(const zelmediatypes::TickTime& time) const {
    const Range range = BoundRange(time);
    const auto at = [this](std::size_t index) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    return static_cast<std::size_t>(
        std::partition_point(at(range.first), at(range.last),
                             [&time](const Entry& e) { return !(time < e.beginTime); }) -
        entries_.begin());
}

std::size_t CaptioningStream::QueryLowerBound(const zelmediatypes::TickTime& time) const {
    RebuildStaleTimeTableWhenDue();
    return LowerBound(time);
}

std::size_t CaptioningStream::QueryUpperBound(const zelmediatypes::TickTime& time) const {
    RebuildStaleTimeTableWhenDue();
    return UpperBound(time);
}

void CaptioningStream::MarkTimeTableStale() {
    tableCurrent_ = false;
    searchesSinceStale_ = 0;
}

void CaptioningStream::RebuildStaleTimeTableWhenDue() const {
    const std::size_t count = entries_.size();
    if (tableCurrent_ || ++searchesSinceStale_ < SearchesBeforeRebuild(count) ||
        count > std::numeric_limits<std::uint32_t>::max()) {
        return;
    }
    timeTable_.clear();
    if (count > 0) {
        tableFirstBegin_ = Ticks(entries_.front().beginTime);
        const std::uint64_t span = Ticks(entries_.back().beginTime) - tableFirstBegin_;
        // The narrowest power-of-two slot width that needs at most one slot per entry.
        slotShift_ = 0;
        while ((span >> slotShift_) >= count) {
            ++slotShift_;
        }
        const std::uint64_t slotCount = (span >> slotShift_) + 1;
        timeTable_.reserve(static_cast<std::size_t>(slotCount) + 1);
        std::size_t index = 0;
        for (std::uint64_t slot = 0; slot < slotCount; ++slot) {
            const std::uint64_t slotStart = slot << slotShift_;
            while (index < count &&
                   Ticks(entries_[index].beginTime) - tableFirstBegin_ < slotStart) {
                ++index;
            }
            timeTable_.push_back(static_cast<std::uint32_t>(index));
        }
        timeTable_.push_back(static_cast<std::uint32_t>(count));
    }
    tableCurrent_ = true;
}

std::vector<CaptioningStream::Entry>& CaptioningStream::MutableEntries() {
    MarkTimeTableStale();
    return entries_;
}

std::size_t CaptioningStream::LandingIndex(const zelmediatypes::TickTime& begin,
                                           std::optional<std::uint64_t> arrival) const {
    const Entry entry{begin, begin, arrival.value_or(std::numeric_limits<std::uint64_t>::max()),
                      nullptr};
    return static_cast<std::size_t>(
        std::partition_point(entries_.begin(), entries_.end(),
                             [&entry](const Entry& e) { return Precedes(e, entry); }) -
        entries_.begin());
}

std::uint64_t CaptioningStream::ArrivalLandingAt(std::size_t index,
                                                 const zelmediatypes::TickTime& begin) {
    if (index >= entries_.size() || entries_[index].beginTime != begin) {
        return NextArrival();
    }
    // Arrivals among equal begin times are distinct and rising, so the one at
    // the index lies above its predecessor's and is free once the rest rise.
    const std::uint64_t arrival = entries_[index].arrival;
    for (std::size_t i = index; i < entries_.size() && entries_[i].beginTime == begin; ++i) {
        nextArrival_ = std::max(nextArrival_, ++entries_[i].arrival + 1);
    }
    return arrival;
}

std::size_t CaptioningStream::Insert(boost::intrusive_ptr<zelcaptioning::Caption> caption,
                                     std::uint64_t arrival) {
    MarkTimeTableStale();
    Entry entry{caption->GetBeginTime(), caption->GetEndTime(), arrival, std::move(caption)};
    const auto at = std::partition_point(entries_.begin(), entries_.end(),
                                         [&entry](const Entry& e) { return Precedes(e, entry); });
    return static_cast<std::size_t>(entries_.insert(at, std::move(entry)) - entries_.begin());
}

CaptioningStream::Entry CaptioningStream::RemoveAt(std::size_t index) {
    MarkTimeTableStale();
    Entry entry = std::move(entries_[index]);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    return entry;
}

std::size_t CaptioningStream::Restamp(std::size_t from) {
    Entry restamped = entries_[from];
    restamped.beginTime = restamped.caption->GetBeginTime();
    restamped.endTime = restamped.caption->GetEndTime();
    if (restamped.beginTime == entries_[from].beginTime) {
        // Same begin time, same arrival: the caption keeps its place and the table holds.
        entries_[from] = std::move(restamped);
        return from;
    }
    MarkTimeTableStale();
    // The entries before its new place, counted while it still sorts by its old time.
    const std::size_t preceding = static_cast<std::size_t>(
        std::partition_point(entries_.begin(), entries_.end(),
                             [&restamped](const Entry& e) { return Precedes(e, restamped); }) -
        entries_.begin());
    const std::size_t to = preceding > from ? preceding - 1 : preceding;
    const auto at = [this](std::size_t index) {
        return entries_.begin() + static_cast<std::ptrdiff_t>(index);
    };
    if (from < to) {
        std::rotate(at(from), at(from + 1), at(to + 1));
    } else if (to < from) {
        std::rotate(at(to), at(from), at(from + 1));
    }
    entries_[to] = std::move(restamped);
    return to;
}

} // namespace platform::core
