#pragma once

#include "common/LossReport.h"
#include "zelcaptioning/StreamFormat.h"
#include "zelmediatypes/TickTime.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace captionformats {

// What the SubRip and WebVTT cue writers share: the output they append to and
// the losses they note against the cue being written.
class CueWriterBase {
protected:
    CueWriterBase(std::string& out, LossReport& losses)
        : out_(out)
        , losses_(losses) {}

    // Notes losses against this cue from here on; a negative begin is written
    // as zero, and neither format names a caption type other than open.
    void BeginCue(zelmediatypes::TickTime begin, zelcaptioning::CaptionType type,
                  std::size_t index) {
        index_ = index;
        begin_ = begin;
        if (begin < zelmediatypes::kTime_Zero) {
            Lose("negative time written as zero");
        }
        if (type != zelcaptioning::kCaptionType_Open && type != zelcaptioning::kCaptionType_None) {
            Lose(captionTypeDropped_, "caption type dropped");
        }
    }
    void Lose(std::string_view what) { losses_.Note(what, index_, begin_); }
    // Notes a loss of a kind that comes cue after cue, its tally looked up
    // once and kept in `tally`.
    void Lose(LossReport::Tally*& tally, std::string_view what) {
        if (tally == nullptr) {
            tally = &losses_.TallyOf(what);
        }
        LossReport::Note(*tally, index_, begin_);
    }

    std::string& out_;
    LossReport& losses_;
    std::size_t index_ = 0;
    zelmediatypes::TickTime begin_;
    LossReport::Tally* captionTypeDropped_ = nullptr;
};

} // namespace captionformats
