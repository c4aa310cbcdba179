#pragma once

#include "BE/ICaptioningStream.h"
#include "KSL/InterfaceRef.h"
#include "KSL/Message.h"
#include "zelcaptioning/Caption.h"
#include "zelmediatypes/TickTime.h"

#include <boost/intrusive_ptr.hpp>

#include <tuple>
#include <utility>
#include <vector>

namespace BE {

enum class CaptionChangeKind { kAdded, kChanged, kRemoved };

// One caption's change. oldBeginTime is its begin time before the change (for
// an added caption, its begin time).
struct CaptionChange {
    boost::intrusive_ptr<zelcaptioning::Caption> caption;
    CaptionChangeKind kind = CaptionChangeKind::kChanged;
    zelmediatypes::TickTime oldBeginTime;

    // Orders by old begin time, then kind, then caption identity, so that a set
    // of changes applies in time order.
    friend bool operator<(const CaptionChange& a, const CaptionChange& b) {
        return std::make_tuple(a.oldBeginTime, a.kind, a.caption.get()) <
               std::make_tuple(b.oldBeginTime, b.kind, b.caption.get());
    }
    friend bool operator==(const CaptionChange&, const CaptionChange&) = default;
};

using StreamCaptionChange = std::pair<KSL::InterfaceRef<ICaptioningStream>, CaptionChange>;

// Captions were added, changed (content or times) or removed. On the stream's
// station, after the stream has changed.
class CaptionsChangedMessage : public KSL::MessageOf<CaptionsChangedMessage> {
public:
    static constexpr const char* kTypeName = "BE::CaptionsChangedMessage";
    explicit CaptionsChangedMessage(std::vector<StreamCaptionChange> changes)
        : changes_(std::move(changes)) {}

    const std::vector<StreamCaptionChange>& GetChanges() const { return changes_; }

private:
    std::vector<StreamCaptionChange> changes_;
};

struct CaptionMove {
    boost::intrusive_ptr<zelcaptioning::Caption> caption;
    zelmediatypes::TickTime oldBeginTime;
    zelmediatypes::TickTime newBeginTime;

    friend bool operator==(const CaptionMove&, const CaptionMove&) = default;
};

// Captions were shifted in time as a group (a ripple delete closes the gap it
// leaves), keeping their content and durations. On the stream's station; the
// moves are listed in the stream's new order.
class CaptionsMovedMessage : public KSL::MessageOf<CaptionsMovedMessage> {
public:
    static constexpr const char* kTypeName = "BE::CaptionsMovedMessage";
    CaptionsMovedMessage(KSL::InterfaceRef<ICaptioningStream> stream,
                         std::vector<CaptionMove> moves)
        : stream_(std::move(stream))
        , moves_(std::move(moves)) {}

    const KSL::InterfaceRef<ICaptioningStream>& GetStream() const { return stream_; }
    const std::vector<CaptionMove>& GetMoves() const { return moves_; }

private:
    KSL::InterfaceRef<ICaptioningStream> stream_;
    std::vector<CaptionMove> moves_;
};

} // namespace BE
