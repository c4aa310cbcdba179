#include "scc/SccTimeline.h"

#include "scc/SccTimecode.h"

#include <iterator>

namespace captionformats::scc {

bool SccTimeline::IsFree(std::int64_t frame, std::size_t count) const {
    if (frame < 0) {
        return false;
    }
    const auto next = words_.lower_bound(frame);
    return next == words_.end() || next->first >= frame + static_cast<std::int64_t>(count);
}

void SccTimeline::Put(std::int64_t frame, const cea608::Unit& unit) {
    for (cea608::Word word : unit) {
        words_[frame++] = word;
    }
}

std::int64_t SccTimeline::EarliestFreeRun(std::int64_t from, std::size_t count) const {
    std::int64_t frame = std::max<std::int64_t>(from, 0);
    while (!IsFree(frame, count)) {
        // Jump past the word that blocks the run.
        auto blocking = words_.lower_bound(frame);
        frame = blocking->first + 1;
    }
    return frame;
}

std::optional<std::int64_t> SccTimeline::LatestFreeRun(std::int64_t endExclusive,
                                                       std::int64_t notBefore,
                                                       std::size_t count) const {
    std::int64_t start = endExclusive - static_cast<std::int64_t>(count);
    while (start >= notBefore && start >= 0) {
        if (IsFree(start, count)) {
            return start;
        }
        // Move before the latest word inside the wanted run.
        auto blocking = words_.lower_bound(start + static_cast<std::int64_t>(count));
        --blocking;
        start = blocking->first - static_cast<std::int64_t>(count);
    }
    return std::nullopt;
}

std::string SccTimeline::ToScc(bool dropFrame) const {
    static constexpr char kHexDigits[] = "0123456789abcdef";
    std::string text = "Scenarist_SCC V1.0\n";
    text.reserve(text.size() + words_.size() * 5);
    for (auto word = words_.begin(); word != words_.end(); ++word) {
        const auto previous = word == words_.begin() ? words_.end() : std::prev(word);
        if (previous == words_.end() || previous->first + 1 != word->first) {
            text += "\n" + FormatTimecode(word->first, dropFrame) + '\t';
        } else {
            text += ' ';
        }
        for (int shift = 12; shift >= 0; shift -= 4) {
            text += kHexDigits[(word->second >> shift) & 0x0F];
        }
        const auto next = std::next(word);
        if (next == words_.end() || next->first != word->first + 1) {
            text += '\n';
        }
    }
    return text;
}

} // namespace captionformats::scc
