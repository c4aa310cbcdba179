#pragma once

#include "BE/ICaptioningStream.h"
#include "KSL/InterfaceRef.h"
#include "zelcaptioning/Caption.h"
#include "zelcore/UTF16String.h"
#include "zelmediatypes/TickTime.h"
#include "zelmediatypes/TimeDisplay.h"

#include <boost/intrusive_ptr.hpp>

#include <cstddef>
#include <vector>

namespace MZ {

// Reads and edits the captions of one caption stream. A caption block is one
// caption of the stream with its begin and end time. Every edit goes to the
// project's undo history (as a step or not, as stated per operation) and is
// announced with BE::CaptionsChangedMessage (and BE::CaptionsMovedMessage for
// a ripple) on the stream's station before the call returns.
class Captioning {
public:
    // Throws KSL::Exception when the reference is empty or the stream is no
    // longer part of a project.
    explicit Captioning(KSL::InterfaceRef<BE::ICaptioningStream> stream);

    struct CaptionBlockTimes {
        zelmediatypes::TickTime beginTime;
        zelmediatypes::TickTime endTime;
        friend bool operator==(const CaptionBlockTimes&, const CaptionBlockTimes&) = default;
    };

    std::size_t GetNumberOfCaptionBlocks() const;

    // The times of every block, in stream order. Costs O(n).
    void GetCaptionBlockTimes(std::vector<CaptionBlockTimes>& times) const;

    // The first caption that begins at the time; failing that, the latest
    // caption beginning before it if it still runs at the time (end excluded);
    // else null. Costs O(log n).
    boost::intrusive_ptr<zelcaptioning::Caption>
    GetCaptionBlock(const zelmediatypes::TickTime& time) const;

    // The caption's plain text: its spans' texts, paragraphs joined by "\n".
    static zelcore::UTF16String
    ConvertCaptionBlockToText(const boost::intrusive_ptr<zelcaptioning::Caption>& caption);

    // The captions that touch the closed range [from, to] (begin <= to and
    // end >= from), in stream order.
    void
    GetCaptionsInTimeRange(const zelmediatypes::TickTime& from, const zelmediatypes::TickTime& to,
                           std::vector<boost::intrusive_ptr<zelcaptioning::Caption>>& out) const;

    // Adds this caption object (not a copy) after the captions beginning at or
    // before it. One undo step, "Add Caption". Throws if it is already in the
    // stream.
    void AddCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption);

    // The target keeps its identity and takes a deep copy of the value's
    // content, times included (it moves to its new place in the order,
    // keeping its arrival among captions with equal begin times). With
    // undoable, one undo step named by the localisation key actionName.
    // Throws if the target is not in the stream.
    void ReplaceCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& target,
                        const boost::intrusive_ptr<zelcaptioning::Caption>& value, bool undoable,
                        const zelcore::UTF16String& actionName);

    // One undo step, "Delete Caption". With ripple, every caption that begins
    // at or after the removed caption's end moves earlier by its duration.
    void RemoveCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption, bool ripple);

    // Gives the caption a new begin time and duration. With alignToFrames, both
    // are rounded down to whole frames of the frame rate the time display
    // counts in (a display that counts no frames aligns nothing). One undo
    // step, "Change Caption Times".
    void UpdateCaption(const boost::intrusive_ptr<zelcaptioning::Caption>& caption,
                       const zelmediatypes::TickTime& beginTime,
                       const zelmediatypes::TickTime& duration, bool alignToFrames,
                       zelmediatypes::TimeDisplay timeDisplay);

private:
    KSL::InterfaceRef<BE::ICaptioningStream> stream_;
};

} // namespace MZ
