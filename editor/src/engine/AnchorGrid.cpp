#include "caption_editor/AnchorGrid.h"

#include "caption_editor/StyleSummary.h"

namespace caption_editor {

zelcaptioning::AnchorID AnchorFromCell(int column, int row) {
    if (column < 0 || column > 2 || row < 0 || row > 2) {
        return zelcaptioning::kAnchorID_None;
    }
    return row * 3 + column;
}

void CellFromAnchor(zelcaptioning::AnchorID anchor, int& column, int& row) {
    if (anchor >= 0 && anchor <= 8) {
        column = anchor % 3;
        row = anchor / 3;
    } else if (anchor == zelcaptioning::kAnchorID_Free || anchor == zelcaptioning::kAnchorID_None ||
               anchor == StyleSummary::kAnchorMixed) {
        column = 1;
        row = 1;
    } else {
        column = 0;
        row = 0;
    }
}

} // namespace caption_editor
