#include "common/KeypadAnchor.h"

namespace captionformats {

using namespace zelcaptioning;

AnchorID AnchorFromKeypad(int keypadPosition) {
    const int row = 2 - (keypadPosition - 1) / 3;
    const int column = (keypadPosition - 1) % 3;
    return row * 3 + column;
}

int KeypadFromAnchor(AnchorID anchor) {
    if (!IsGridAnchor(anchor)) {
        return 0;
    }
    const int row = anchor / 3;
    const int column = anchor % 3;
    return (2 - row) * 3 + column + 1;
}

bool IsGridAnchor(AnchorID anchor) {
    return anchor >= kAnchorID_TopLeft && anchor <= kAnchorID_BottomRight;
}

TextAlignmentType AlignmentOfColumn(AnchorID anchor) {
    return static_cast<TextAlignmentType>(anchor % 3);
}

} // namespace captionformats
