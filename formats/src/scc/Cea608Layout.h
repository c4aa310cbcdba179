#pragma once

#include "common/LossReport.h"
#include "scc/Cea608RowEncoder.h"

#include "zelcaptioning/Caption.h"

#include <vector>

namespace captionformats::cea608 {

struct PlacedLine {
    zelcaptioning::CaptionTextParagraphPtr paragraph;
    RowPlacement place;
};

// The rows and columns of a caption's non-empty lines, top to bottom. A placed
// line keeps its grid cell (row = y × 15 + 1, column = x × 32, rounded); an
// unplaced line follows the line before it, or its block stands at its grid
// anchor (top, middle or bottom rows; left, centred or right columns). Lines
// that would share a row or fall off the grid are moved and reported.
std::vector<PlacedLine> LayOutLines(const zelcaptioning::Caption& caption, LossReport& losses,
                                    std::size_t captionIndex);

} // namespace captionformats::cea608
