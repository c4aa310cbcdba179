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

    void Note(std::string_view what, std::size_t captionIndex, zelmediatypes::TickTime begin);
    void NoteSpanLosses(const zelcaptioning::TextSpanAttributes& attributes,
                        const SpanCapabilities& kept, std::size_t captionIndex,
                        zelmediatypes::TickTime begin);
    // Kinds in alphabetical order, each as "<what> in N captions (first: caption
    // I at HH:MM:SS.mmm)"; caption numbers are 1-based in writing order.
    void ReportInto(DiagnosticLog& log) const;

private:
    struct Occurrences {
        std::size_t captions = 0;
        std::size_t lastCaptionIndex = 0;
        std::size_t firstCaptionIndex = 0;
        zelmediatypes::TickTime firstBegin;
    };
    // The entry of `what`, added (and `added` set) when there is none.
    Occurrences& Find(std::string_view what, std::size_t captionIndex,
                      zelmediatypes::TickTime begin, bool& added);

    // Looked up by view: a kind already noted costs no string.
    std::map<std::string, Occurrences, std::less<>> losses_;
    // The kinds noted last, with their entries, tried before the map: a
    // writer notes the same few kinds for caption after caption.
    struct Recent {
        std::string_view what; // the map's key
        Occurrences* occurrences = nullptr;
    };
    std::array<Recent, 4> recent_;
    std::size_t nextRecent_ = 0;
};

} // namespace captionformats
