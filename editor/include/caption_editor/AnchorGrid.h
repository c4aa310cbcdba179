#pragma once

#include "zelcaptioning/ParagraphStyleAttributes.h"

namespace caption_editor {

// The anchor of a cell of the three-by-three position grid: row × 3 + column,
// or kAnchorID_None for a cell outside the grid.
zelcaptioning::AnchorID AnchorFromCell(int column, int row);

// The cell that shows an anchor: its own cell for 0 to 8; the centre for the
// free anchor (9), for none (-1) and for mixed (-2); the top-left cell for
// anything else.
void CellFromAnchor(zelcaptioning::AnchorID anchor, int& column, int& row);

} // namespace caption_editor
