#pragma once

#include "zelcaptioning/ParagraphStyleAttributes.h"

namespace captionformats {

// The anchor grid numbered like a numeric keypad, as SubRip's {\anN} and similar
// tags do: 1 bottom left, 5 centre, 9 top right.
zelcaptioning::AnchorID AnchorFromKeypad(int keypadPosition);
// 0 for an anchor off the grid (free or none).
int KeypadFromAnchor(zelcaptioning::AnchorID anchor);

bool IsGridAnchor(zelcaptioning::AnchorID anchor);
// Left, centre or right by the anchor's column.
zelcaptioning::TextAlignmentType AlignmentOfColumn(zelcaptioning::AnchorID anchor);

} // namespace captionformats
