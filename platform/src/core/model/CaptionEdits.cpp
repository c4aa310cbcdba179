#include "CaptionEdits.h"

#include "KSL/StationUtils.h"
#include "file/CaptionJson.h"
#include "journal/EditTargets.h"

#include <algorithm>

namespace platform::core {

void AnnounceCaptionChange(const KSL::InterfaceRef<CaptioningStream>& stream,
                           boost::intrusive_ptr<zelcaptioning::Caption> caption,
                           BE::CaptionChangeKind kind,
                           const zelmediatypes::TickTime& oldBeginTime) {
    std::vector<BE::StreamCaptionChange> changes;
    changes.emplace_back(KSL::InterfaceRef<BE::ICaptioningStream>(stream),
                         BE::CaptionChange{std::move(caption), kind, oldBeginTime});
    KSL::StationUtils::BroadcastMessage(stream->GetStationID(),
                                        BE::CaptionsChangedMessage(std::move(changes)));
}

CaptionMembershipEdit::CaptionMembershipEdit(KSL::InterfaceRef<CaptioningStream> stream,
                                             boost::intrusive_ptr<zelcaptioning::Caption> caption,
                                             Membership applied,
                                             std::optional<std::uint64_t> arrival)
    : stream_(std::move(stream))
    , caption_(std::move(caption))
    , applied_(applied)
    , arrival_(arrival) {}

bool CaptionMembershipEdit::Apply() {
    return applied_ == Membership::kAdd ? Insert() : Remove();
}

bool CaptionMembershipEdit::Revert() {
    return applied_ == Membership::kAdd ? Remove() : Insert();
}

bool CaptionMembershipEdit::Insert() {
    if (stream_->FindStoredCaptionIndex(caption_.get())) {
        return false;
    }
    if (!arrival_) {
        arrival_ = stream_->NextArrival();
    }
    stream_->Insert(caption_, *arrival_);
    AnnounceCaptionChange(stream_, caption_, BE::CaptionChangeKind::kAdded,
                          caption_->GetBeginTime());
    return true;
}

bool CaptionMembershipEdit::Remove() {
    const auto index = stream_->FindCaptionIndex(caption_.get());
    if (!index) {
        return false;
    }
    const CaptioningStream::Entry removed = stream_->RemoveAt(*index);
    arrival_ = removed.arrival;
    AnnounceCaptionChange(stream_, caption_, BE::CaptionChangeKind::kRemoved, removed.beginTime);
    return true;
}

ReplaceCaptionEdit::ReplaceCaptionEdit(KSL::InterfaceRef<CaptioningStream> stream,
                                       boost::intrusive_ptr<zelcaptioning::Caption> target,
                                       const zelcaptioning::Caption& newContent)
    : stream_(std::move(stream))
    , target_(std::move(target))
    , otherContent_(new zelcaptioning::Caption(newContent)) {}

bool ReplaceCaptionEdit::Apply() {
    return SwapContent();
}

bool ReplaceCaptionEdit::Revert() {
    return SwapContent();
}

bool ReplaceCaptionEdit::SwapContent() {
    const auto index = stream_->FindCaptionIndex(target_.get());
    if (!index) {
        return false;
    }
    const zelmediatypes::TickTime oldBegin = stream_->GetEntries()[*index].beginTime;
    boost::intrusive_ptr<zelcaptioning::Caption> taken(new zelcaptioning::Caption(*target_));
    *target_ = *otherContent_;
    otherContent_ = std::move(taken);
    stream_->Restamp(*index);
    AnnounceCaptionChange(stream_, target_, BE::CaptionChangeKind::kChanged, oldBegin);
    return true;
}

RippleRemoveCaptionEdit::RippleRemoveCaptionEdit(
    KSL::InterfaceRef<CaptioningStream> stream,
    boost::intrusive_ptr<zelcaptioning::Caption> caption)
    : stream_(std::move(stream))
    , caption_(std::move(caption)) {}

std::unique_ptr<RippleRemoveCaptionEdit>
RippleRemoveCaptionEdit::Applied(KSL::InterfaceRef<CaptioningStream> stream,
                                 boost::intrusive_ptr<zelcaptioning::Caption> caption,
                                 std::size_t index,
                                 std::vector<CaptioningStream::Entry> tailBefore) {
    auto edit = std::make_unique<RippleRemoveCaptionEdit>(std::move(stream), std::move(caption));
    edit->index_ = index;
    edit->tailBefore_ = std::move(tailBefore);
    return edit;
}

bool RippleRemoveCaptionEdit::Apply() {
    const auto index = stream_->FindCaptionIndex(caption_.get());
    if (!index) {
        return false;
    }
    auto& entries = stream_->MutableEntries();
    const auto at = [&entries](std::size_t i) {
        return entries.begin() + static_cast<std::ptrdiff_t>(i);
    };
    index_ = *index;
    tailBefore_.assign(at(index_), entries.end());
    const CaptioningStream::Entry removed = entries[index_];
    const zelmediatypes::TickTime duration = removed.endTime - removed.beginTime;
    entries.erase(at(index_));

    // Captions beginning at or after the removed end form a suffix of the order.
    const std::size_t firstShifted = stream_->LowerBound(removed.endTime);
    std::vector<BE::CaptionMove> moves;
    if (duration != zelmediatypes::TickTime() && firstShifted < entries.size()) {
        for (std::size_t i = firstShifted; i < entries.size(); ++i) {
            CaptioningStream::Entry& e = entries[i];
            moves.push_back({e.caption, e.beginTime, e.beginTime - duration});
            e.beginTime = e.beginTime - duration;
            e.endTime = e.endTime - duration;
            e.caption->SetBeginTime(e.beginTime);
            e.caption->SetEndTime(e.endTime);
        }
        std::inplace_merge(at(index_), at(firstShifted), entries.end(),
                           &CaptioningStream::Precedes);
        std::stable_sort(moves.begin(), moves.end(), [](const auto& a, const auto& b) {
            return a.newBeginTime < b.newBeginTime;
        });
    }
    AnnounceCaptionChange(stream_, caption_, BE::CaptionChangeKind::kRemoved, removed.beginTime);
    if (!moves.empty()) {
        KSL::StationUtils::BroadcastMessage(
            stream_->GetStationID(),
            BE::CaptionsMovedMessage(KSL::InterfaceRef<BE::ICaptioningStream>(stream_),
                                     std::move(moves)));
    }
    return true;
}

bool RippleRemoveCaptionEdit::Revert() {
    auto& entries = stream_->MutableEntries();
    if (entries.size() + 1 != index_ + tailBefore_.size()) {
        return false;
    }
    std::vector<BE::CaptionMove> moves;
    for (const CaptioningStream::Entry& e : tailBefore_) {
        if (e.caption != caption_ && e.caption->GetBeginTime() != e.beginTime) {
            moves.push_back({e.caption, e.caption->GetBeginTime(), e.beginTime});
        }
        e.caption->SetBeginTime(e.beginTime);
        e.caption->SetEndTime(e.endTime);
    }
    entries.resize(index_);
    entries.insert(entries.end(), tailBefore_.begin(), tailBefore_.end());
    if (!moves.empty()) {
        KSL::StationUtils::BroadcastMessage(
            stream_->GetStationID(),
            BE::CaptionsMovedMessage(KSL::InterfaceRef<BE::ICaptioningStream>(stream_),
                                     std::move(moves)));
    }
    AnnounceCaptionChange(stream_, caption_, BE::CaptionChangeKind::kAdded,
                          caption_->GetBeginTime());
    return true;
}

std::string CaptionMembershipEdit::Describe() const {
    return applied_ == Membership::kAdd ? DescribeInsert() : DescribeRemove();
}

std::string CaptionMembershipEdit::DescribeRevert() const {
    return applied_ == Membership::kAdd ? DescribeRemove() : DescribeInsert();
}

// The index tells a replay where among captions of equal begin times the
// caption goes, which its arrival decides here.
std::string CaptionMembershipEdit::DescribeInsert() const {
    EditDescription description("addCaption");
    return std::move(AddPlace(*stream_, description)
                         .Caption("caption", *caption_)
                         .Index("index", stream_->LandingIndex(caption_->GetBeginTime(), arrival_)))
        .Finish();
}

std::string CaptionMembershipEdit::DescribeRemove() const {
    EditDescription description("removeCaption");
    return std::move(
               AddPlace(*stream_, description).Index("index", CaptionIndex(*stream_, *caption_)))
        .Finish();
}

std::string ReplaceCaptionEdit::Describe() const {
    EditDescription description("replaceCaption");
    return std::move(AddPlace(*stream_, description)
                         .Index("index", CaptionIndex(*stream_, *target_))
                         .Caption("caption", *otherContent_))
        .Finish();
}

std::string RippleRemoveCaptionEdit::Describe() const {
    EditDescription description("rippleRemoveCaption");
    return std::move(
               AddPlace(*stream_, description).Index("index", CaptionIndex(*stream_, *caption_)))
        .Finish();
}

// The captions the removal did not move (those that began before the removed
// caption's end) by their index now; every other caption after the index
// moves back by the removed caption's duration.
std::string RippleRemoveCaptionEdit::DescribeRevert() const {
    std::string unshifted = "[";
    for (const CaptioningStream::Entry& e : tailBefore_) {
        if (e.caption != caption_ && e.beginTime < caption_->GetEndTime()) {
            if (unshifted.size() > 1) {
                unshifted += ',';
            }
            unshifted += std::to_string(CaptionIndex(*stream_, *e.caption));
        }
    }
    unshifted += ']';
    EditDescription description("rippleRestoreCaption");
    return std::move(AddPlace(*stream_, description)
                         .Index("index", index_)
                         .Caption("caption", *caption_)
                         .Json("unshifted", unshifted))
        .Finish();
}

} // namespace platform::core
