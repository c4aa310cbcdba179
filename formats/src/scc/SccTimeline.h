#pragma once

#include "scc/Cea608RowEncoder.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace captionformats::scc {

// The frames of one SCC channel, one byte pair each, and what is sent in them.
class SccTimeline {
public:
    bool IsFree(std::int64_t frame, std::size_t count) const;
    void Put(std::int64_t frame, const cea608::Unit& unit);

    // The first frame at or after `from` where `count` frames are free.
    std::int64_t EarliestFreeRun(std::int64_t from, std::size_t count) const;
    // The latest start of `count` free frames ending before `endExclusive` and
    // starting at or after `notBefore`; nothing when there is none.
    std::optional<std::int64_t> LatestFreeRun(std::int64_t endExclusive, std::int64_t notBefore,
                                              std::size_t count) const;

    // The SCC text: the header, then one line per run of consecutive frames.
    std::string ToScc(bool dropFrame) const;

private:
    std::map<std::int64_t, cea608::Word> words_;
};

} // namespace captionformats::scc
