#pragma once

#include "BE/ICaptioningStream.h"
#include "KSL/IStation.h"
#include "RefCountedObject.h"
#include "zelmediatypes/TickTime.h"

#include <boost/intrusive_ptr.hpp>

#include <cstdint>
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
    // no linear search.
    std::optional<std::size_t> FindStoredCaptionIndex(const zelcaptioning::Caption* caption) const;

    void SetStreamFormat(zelcaptioning::StreamFormat format) { format_ = format; }
    MasterClip* GetOwner() const { return owner_; }
    void SetOwner(MasterClip* owner) { owner_ = owner; }
    // The project through the clip and its bin; null once detached.
    Project* GetProject() const;

    const std::vector<Entry>& GetEntries() const { return entries_; }
    std::size_t LowerBound(const zelmediatypes::TickTime& time) const;
    std::size_t UpperBound(const zelmediatypes::TickTime& time) const;

    // An arrival later than every caption's so far.
    std::uint64_t NextArrival() { return nextArrival_++; }
    // Stores the caption with its current times in its place; returns its index.
    std::size_t Insert(boost::intrusive_ptr<zelcaptioning::Caption> caption, std::uint64_t arrival);
    Entry RemoveAt(std::size_t index);
    // Stores the current times of the caption at index from and moves it to
    // its place. Returns its new index.
    std::size_t Restamp(std::size_t from);
    // For edits that shift many captions at once; they keep the order and stored times.
    std::vector<Entry>& MutableEntries() { return entries_; }

private:
    zelcaptioning::StreamFormat format_;
    MasterClip* owner_ = nullptr;
    KSL::StationID station_;
    std::vector<Entry> entries_;
    std::uint64_t nextArrival_ = 0;
};

} // namespace platform::core
