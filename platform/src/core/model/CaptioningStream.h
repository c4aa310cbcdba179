#pragma once

#include "BE/ICaptioningStream.h"
#include "KSL/IStation.h"
#include "RefCountedObject.h"
#include "zelmediatypes/TickTime.h"

#include <boost/intrusive_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace platform::core {

class MasterClip;
class Project;

// A caption stream: its captions ordered by begin time and, among equal begin
// times, by arrival (the order they were first added in), each stored with the
// begin and end time it had when it was last stored, so that searches and the
// block-time listing need no call into the caption. A caption keeps its
// arrival when it is retimed, removed and taken back, so any sequence of
// changes and their undoing restores the order exactly. Only the model's
// edits change it, and they keep the stored times current.
//
// Searches by time go through a table from time to the first entry of each
// stretch of the timeline, so that for captions spread along a timeline a
// search reads a table slot and an entry or two whatever the stream's size.
// Adding, removing or retiming a caption leaves the table stale; it is rebuilt
// (in linear time) by the searches of MZ::Captioning only after enough of them
// have fallen back to a binary search to pay for it, so a run of edits each
// followed by a search never costs linear time per edit. Changing a caption
// without moving its begin time keeps the table.
class CaptioningStream final : public RefCountedObject<BE::ICaptioningStream, KSL::IStation> {
public:
    static constexpr const char* kImplementationID = "platform::core::CaptioningStream";

    struct Entry {
        zelmediatypes::TickTime beginTime;
        zelmediatypes::TickTime endTime;
        std::uint64_t arrival = 0;
        boost::intrusive_ptr<zelcaptioning::Caption> caption;
    };
    // The stream's order.
    static bool Precedes(const Entry& a, const Entry& b) {
        return a.beginTime != b.beginTime ? a.beginTime < b.beginTime : a.arrival < b.arrival;
    }

    explicit CaptioningStream(zelcaptioning::StreamFormat format);

    void* QueryInterface(std::string_view interfaceID) const noexcept override;
    BE::ProjectItemKind GetItemKind() const override;
    zelcore::UTF16String GetName() const override;
    KSL::StationID GetStationID() const override;

    zelcaptioning::StreamFormat GetStreamFormat() const override;
    int GetGridRowCount() const override;
    int GetGridColumnCount() const override;
    KSL::InterfaceRef<BE::IMasterClip> GetMasterClip() const override;
    std::size_t GetCaptionCount() const override;
    boost::intrusive_ptr<zelcaptioning::Caption> GetCaption(std::size_t index) const override;
    std::optional<std::size_t>
    FindCaptionIndex(const zelcaptioning::Caption* caption) const override;

    // The index among the captions stored at the caption's current begin time;
    // no linear search. Like FindCaptionIndex, it searches as the queries do
    // (QueryLowerBound), so edits call them before they change any entry.
    std::optional<std::size_t> FindStoredCaptionIndex(const zelcaptioning::Caption* caption) const;

    void SetStreamFormat(zelcaptioning::StreamFormat format) { format_ = format; }
    MasterClip* GetOwner() const { return owner_; }
    void SetOwner(MasterClip* owner) { owner_ = owner; }
    // The project through the clip and its bin; null once detached.
    Project* GetProject() const;

    const std::vector<Entry>& GetEntries() const { return entries_; }
    // The first entry beginning at or after (LowerBound), or after (UpperBound),
    // the time. These use the time table only when it is current and never
    // rebuild it, so an edit may call them while it changes the entries.
    std::size_t LowerBound(const zelmediatypes::TickTime& time) const;
    std::size_t UpperBound(const zelmediatypes::TickTime& time) const;
    // The same for queries made between edits: they may rebuild a stale table.
    std::size_t QueryLowerBound(const zelmediatypes::TickTime& time) const;
    std::size_t QueryUpperBound(const zelmediatypes::TickTime& time) const;

    // An arrival later than every caption's so far.
    std::uint64_t NextArrival() { return nextArrival_++; }
    // The index at which Insert would store a caption beginning at begin with
    // the arrival; without one, with an arrival later than every caption's.
    std::size_t LandingIndex(const zelmediatypes::TickTime& begin,
                             std::optional<std::uint64_t> arrival) const;
    // An arrival with which Insert stores a caption beginning at begin at the
    // index, among the captions beginning then. The arrivals of those from
    // the index on are raised by one to make room; their order is kept.
    std::uint64_t ArrivalLandingAt(std::size_t index, const zelmediatypes::TickTime& begin);
    // Stores the caption with its current times in its place; returns its index.
    std::size_t Insert(boost::intrusive_ptr<zelcaptioning::Caption> caption, std::uint64_t arrival);
    Entry RemoveAt(std::size_t index);
    // Stores the current times of the caption at index from and moves it to
    // its place. Returns its new index.
    std::size_t Restamp(std::size_t from);
    // For edits that shift many captions at once; they keep the order and
    // stored times, and finish changing the entries before anything queries
    // the stream (the table is marked stale when they take the entries): in
    // between they may search only with LowerBound and UpperBound.
    std::vector<Entry>& MutableEntries();

private:
    // The entries [first, last] among which the bound of the time lies.
    struct Range {
        std::size_t first;
        std::size_t last;
    };
    Range BoundRange(const zelmediatypes::TickTime& time) const;
    void MarkTimeTableStale();
    void RebuildStaleTimeTableWhenDue() const;

    zelcaptioning::StreamFormat format_;
    MasterClip* owner_ = nullptr;
    KSL::StationID station_;
    std::vector<Entry> entries_;
    std::uint64_t nextArrival_ = 0;

    // Slot s holds the index of the first entry beginning at or after
    // tableFirstBegin_ + (s << slotShift_) ticks; a last slot holds the entry count.
    // Offsets from the first begin time are unsigned, so any two 64-bit times
    // are at most 2^64 - 1 ticks apart. Caches, updated by const searches on
    // the one thread that uses the model.
    mutable std::vector<std::uint32_t> timeTable_;
    mutable std::uint64_t tableFirstBegin_ = 0;
    mutable unsigned slotShift_ = 0;
    mutable bool tableCurrent_ = false;
    mutable std::size_t searchesSinceStale_ = 0;
};

} // namespace platform::core
