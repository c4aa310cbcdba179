#pragma once

#include "common/DiagnosticLog.h"
#include "zelcaptioning/TextSpanAttributes.h"
#include "zelmediatypes/TickTime.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace captionformats {

// What a writer's format keeps of a span's attributes; everything else differing
// from the defaults is reported as dropped.
struct SpanCapabilities {
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool textColor = false; // red, green and blue
    bool textOpacity = false;
    bool backgroundColor = false;
    bool fontName = false;
    bool fontSize = false;
    bool edge = false;
};

// Counts what a writer could not carry, by kind, and reports each kind once with
// the number of captions it touched and the first of them, so a long file gives
// a short report.
class LossReport {
public:
    LossReport() = default;
    // Not copied: it keeps pointers into its own map.
    LossReport(const LossReport&) = delete;
    LossReport& operator=(const LossReport&) = delete;

    // The tally of one kind of loss, at a place that stays put while the
    // report lives, so that a writer noting the same kind cue after cue finds
    // it once. A kind looked up but never noted is not reported.
    class Tally {
    private:
        friend class LossReport;
        std::size_t captions = 0;
        std::size_t lastCaptionIndex = 0;
        std::size_t firstCaptionIndex = 0;
        zelmediatypes::TickTime firstBegin;
    };
    Tally& TallyOf(std::string_view what);

    void Note(std::string_view what, std::size_t captionIndex, zelmediatypes::TickTime begin) {
        Note(TallyOf(what), captionIndex, begin);
    }
    static void Note(Tally& tally, std::size_t captionIndex, zelmediatypes::TickTime begin) {
        if (tally.captions == 0) {
            tally = {};
            tally.captions = 1;
            tally.lastCaptionIndex = tally.firstCaptionIndex = captionIndex;
            tally.firstBegin = begin;
        } else if (tally.lastCaptionIndex != captionIndex) {
            ++tally.captions;
            tally.lastCaptionIndex = captionIndex;
        }
    }
    void NoteSpanLosses(const zelcaptioning::TextSpanAttributes& attributes,
                        const SpanCapabilities& kept, std::size_t captionIndex,
                        zelmediatypes::TickTime begin);
    // Kinds in alphabetical order, each as "<what> in N captions (first: caption
    // I at HH:MM:SS.mmm)"; caption numbers are 1-based in writing order.
    void ReportInto(DiagnosticLog& log) const;

private:
    // Looked up by view: a kind already noted costs no string.
    std::map<std::string, Tally, std::less<>> losses_;
    // The kinds noted last, with their entries, tried before the map: a
    // writer notes the same few kinds for caption after caption.
    struct Recent {
        std::string_view what; // the map's key
        Tally* tally = nullptr;
    };
    std::array<Recent, 4> recent_;
    std::size_t nextRecent_ = 0;
};

} // namespace captionformats
