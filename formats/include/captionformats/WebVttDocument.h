#pragma once

#include "captionformats/CaptionReader.h"
#include "zelcaptioning/Position.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace captionformats {

// A percentage as a WebVTT file writes it: the value the W3C algorithm computes
// and the exact fraction of the digits (to nine decimals).
struct VttPercentage {
    double value = 0.0;
    zelcaptioning::Rational exact;
};

// A WebVTT region as the W3C parsing algorithm leaves it.
struct VttRegion {
    std::string id;
    double width = 100.0;
    double lines = 3.0; // a whole number, as large as the file writes it
    double regionAnchorX = 0.0;
    double regionAnchorY = 100.0;
    double viewportAnchorX = 0.0;
    double viewportAnchorY = 100.0;
    bool scrollUp = false;
};

// A WebVTT cue as the W3C parsing algorithm leaves it: raw identifier and text,
// times in milliseconds (saturating), and every cue setting.
struct VttCue {
    enum class Vertical { kHorizontal, kRightToLeft, kLeftToRight };
    enum class LineAlign { kStart, kCenter, kEnd };
    enum class PositionAlign { kAuto, kLineLeft, kCenter, kLineRight };
    enum class Align { kStart, kCenter, kEnd, kLeft, kRight };

    std::string id;
    std::int64_t startMilliseconds = 0;
    std::int64_t endMilliseconds = 0;
    std::string text;
    Vertical vertical = Vertical::kHorizontal;
    std::optional<VttPercentage> line; // none: auto; a line number when snapToLines
    bool snapToLines = true;
    LineAlign lineAlign = LineAlign::kStart;
    std::optional<VttPercentage> position; // none: auto
    PositionAlign positionAlign = PositionAlign::kAuto;
    double size = 100.0;
    Align align = Align::kCenter;
    // Index into VttDocument::regions; cues naming the same region share it.
    std::optional<std::size_t> region;
    std::uint64_t timingLine = 0;    // where the cue's timing line is
    std::uint64_t textFirstLine = 0; // where its text starts
};

struct VttDocument {
    std::vector<VttRegion> regions; // every region defined, later ones of an id included
    std::vector<VttCue> cues;
    std::vector<std::string> styleSheets; // the text of each STYLE block
};

struct VttParseResult {
    VttDocument document;
    std::vector<Diagnostic> warnings;
    std::vector<Diagnostic> errors; // a bad signature: the file is rejected
};

// The W3C WebVTT file parsing algorithm. Warnings report cues and blocks the
// algorithm drops and settings it ignores.
VttParseResult ParseWebVttDocument(std::string_view bytes, const ReadOptions& options);

} // namespace captionformats
