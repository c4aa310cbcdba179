#pragma once

#include "common/LossReport.h"
#include "scc/Cea608Layout.h"
#include "scc/SccTimeline.h"

#include "zelcaptioning/Caption.h"

#include <string>
#include <vector>

namespace captionformats::scc {

// Places the byte pairs of each caption on the channel's frames, in begin
// order: fixed pairs (EOC, CR, a paint-on caption's first preamble, EDM) on
// their frame, loads before them in free frames. What cannot go on its frame
// goes on the first free one after, and the delay is reported.
class SccScheduler {
public:
    explicit SccScheduler(LossReport& losses)
        : losses_(losses) {}

    // `next` is the caption after this one, if any.
    void Add(const zelcaptioning::Caption& caption, std::size_t index,
             const zelcaptioning::Caption* next);

    const SccTimeline& Timeline() const { return timeline_; }

private:
    enum class Mode { kNone, kPopOn, kRollUp, kPaintOn };

    // Leaves only the caption's last line, the one a roll-up sends; reports
    // lines above it that the screen does not already show.
    void KeepNewRollUpLine(std::vector<cea608::PlacedLine>& lines);
    void AddPopOn(const std::vector<cea608::Unit>& body, std::int64_t begin);
    void AddRollUp(const std::vector<cea608::Unit>& body, std::int64_t begin, int depth);
    void AddPaintOn(const std::vector<cea608::Unit>& body, std::int64_t begin);
    void AddEnd(const zelcaptioning::Caption& caption, std::int64_t end,
                const zelcaptioning::Caption* next);

    // Puts `unit` on `frame` or the first free frame after; returns where.
    std::int64_t PutFixed(std::int64_t frame, const cea608::Unit& unit);
    // Puts the units in order from `from` on; returns the frame after them.
    std::int64_t PutForward(std::int64_t from, const std::vector<cea608::Unit>& units);
    // Puts the units in order, the last ending before `endExclusive`, none
    // before `notBefore`; false (nothing put) when they do not fit.
    bool PutBackward(std::int64_t endExclusive, std::int64_t notBefore,
                     const std::vector<cea608::Unit>& units);
    void NoteDelay(std::int64_t wanted, std::int64_t actual, const char* what);

    LossReport& losses_;
    SccTimeline timeline_;
    Mode mode_ = Mode::kNone;
    int rollUpDepth_ = 0;
    // The first frame the next caption's pairs may use: a pop-on load may go
    // out while the caption before is still shown, the rest only after its EDM.
    std::int64_t freeFrom_ = 0;
    std::int64_t displayFreeFrom_ = 0;
    std::size_t index_ = 0;
    zelmediatypes::TickTime begin_;
    std::vector<std::u16string> rollUpScreen_; // the lines a roll-up window shows
};

} // namespace captionformats::scc
