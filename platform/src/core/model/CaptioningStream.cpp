#include "CaptioningStream.h"

#include "MasterClip.h"
#include "ObjectSerial.h"
#include "zelcaptioning/StreamFormat.h"

#include <algorithm>

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
    for (std::size_t i = LowerBound(begin); i < entries_.size() && entries_[i].beginTime == begin;
         ++i) {
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

std::size_t CaptioningStream::LowerBound(const zelmediatypes::TickTime& time) const {
    return static_cast<std::size_t>(
        std::partition_point(entries_.begin(), entries_.end(),
                             [&time](const Entry& e) { return e.beginTime < time; }) -
        entries_.begin());
}

std::size_t CaptioningStream::UpperBound(const zelmediatypes::TickTime& time) const {
    return static_cast<std::size_t>(
        std::partition_point(entries_.begin(), entries_.end(),
                             [&time](const Entry& e) { return !(time < e.beginTime); }) -
        entries_.begin());
}

std::size_t CaptioningStream::Insert(boost::intrusive_ptr<zelcaptioning::Caption> caption,
                                     std::uint64_t arrival) {
    Entry entry{caption->GetBeginTime(), caption->GetEndTime(), arrival, std::move(caption)};
    const auto at = std::partition_point(entries_.begin(), entries_.end(),
                                         [&entry](const Entry& e) { return Precedes(e, entry); });
    return static_cast<std::size_t>(entries_.insert(at, std::move(entry)) - entries_.begin());
}

CaptioningStream::Entry CaptioningStream::RemoveAt(std::size_t index) {
    Entry entry = std::move(entries_[index]);
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
    return entry;
}

std::size_t CaptioningStream::Restamp(std::size_t from) {
    Entry restamped = entries_[from];
    restamped.beginTime = restamped.caption->GetBeginTime();
    restamped.endTime = restamped.caption->GetEndTime();
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
