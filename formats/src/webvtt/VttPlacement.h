#pragma once

#include "captionformats/WebVttDocument.h"
#include "zelcaptioning/CaptionTextParagraph.h"

#include <optional>
#include <string>
#include <vector>

namespace captionformats::webvtt {

// Where a cue's lines go in the caption model. The grid anchors come from the
// settings the writer uses for them: row 0 "line:0", row 1 "line:50%,center",
// row 2 no line; the column from "align" alone, or "position:0%" / "50%" /
// "100%" without a position alignment. Any other line or position makes the
// lines free, the first one placed at x = position and y = line (percentages
// with line-left and start alignment are exact; the rest is approximated and
// reported).
struct CuePlacement {
    zelcaptioning::ParagraphStyleAttributes style;
    std::optional<zelcaptioning::Position> firstLinePosition; // free placement only
    std::vector<std::string> approximations;
};

CuePlacement PlacementOfCue(const VttCue& cue);

// The cue settings for a placement, the inverse of PlacementOfCue; the free
// placement of an unplaced first line is reported in `approximations`.
std::string SettingsOfPlacement(const zelcaptioning::ParagraphStyleAttributes& style,
                                const zelcaptioning::Position& firstLinePosition,
                                std::vector<std::string>& approximations);

} // namespace captionformats::webvtt
