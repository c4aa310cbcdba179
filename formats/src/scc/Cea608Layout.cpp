#include "scc/Cea608Layout.h"

#include "common/KeypadAnchor.h"
#include "scc/Cea608Screen.h"

#include <algorithm>

namespace captionformats::cea608 {

using namespace zelcaptioning;

namespace {

constexpr int kRows = CaptionMemory::kRows;
constexpr int kColumns = CaptionMemory::kColumns;

int LengthOf(const CaptionTextParagraph& paragraph) {
    return static_cast<int>(paragraph.GetParagraphTextLength());
}

RowPlacement GridPlace(const ParagraphStyleAttributes& style, int lineIndex, int lineCount,
                       int length) {
    const AnchorID anchor =
        IsGridAnchor(style.GetAnchorID()) ? style.GetAnchorID() : kAnchorID_BottomCenter;
    const int anchorRow = anchor / 3;
    const int firstRow = anchorRow == 0   ? 1
                         : anchorRow == 1 ? (kRows - lineCount) / 2 + 1
                                          : kRows - lineCount + 1;
    int column = 0;
    switch (style.GetTextAlignment()) {
    case kTextAlignment_Left:
        column = 0;
        break;
    case kTextAlignment_Center:
        column = (kColumns - length) / 2;
        break;
    case kTextAlignment_Right:
        column = kColumns - length;
        break;
    }
    return {firstRow + lineIndex, std::clamp(column, 0, kColumns - 1)};
}

} // namespace

std::vector<PlacedLine> LayOutLines(const Caption& caption, LossReport& losses,
                                    std::size_t captionIndex) {
    std::vector<CaptionTextParagraphPtr> lines;
    for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
        if (LengthOf(*caption.GetCaptionTextParagraph(p)) > 0) {
            lines.push_back(caption.GetCaptionTextParagraph(p));
        }
    }
    std::vector<PlacedLine> placed;
    const int count = static_cast<int>(lines.size());
    for (int i = 0; i < count; ++i) {
        const CaptionTextParagraph& line = *lines[static_cast<std::size_t>(i)];
        if (line.GetParagraphStyleAttributes().GetTextAlignment() != kTextAlignment_Left) {
            losses.Note("text alignment dropped (CEA-608 places lines by column)", captionIndex,
                        caption.GetBeginTime());
        }
        RowPlacement place;
        if (IsPlaced(lines[static_cast<std::size_t>(i)])) {
            const Position position = line.GetCaptionPosition();
            place.row = static_cast<int>(ValueWithScale(position.GetY(), kRows, true)) + 1;
            place.column = static_cast<int>(ValueWithScale(position.GetX(), kColumns, true));
        } else if (line.GetParagraphStyleAttributes().GetAnchorID() == kAnchorID_Free &&
                   !placed.empty()) {
            place = {placed.back().place.row + 1, placed.back().place.column};
        } else {
            place = GridPlace(line.GetParagraphStyleAttributes(), i, count, LengthOf(line));
        }
        if (!placed.empty() && place.row <= placed.back().place.row) {
            place.row = placed.back().place.row + 1;
            losses.Note("lines on one row moved down", captionIndex, caption.GetBeginTime());
        }
        if (place.row < 1 || place.row > kRows || place.column < 0 || place.column >= kColumns) {
            losses.Note("lines off the 32 x 15 grid moved onto it", captionIndex,
                        caption.GetBeginTime());
            place.row = std::clamp(place.row, 1, kRows);
            place.column = std::clamp(place.column, 0, kColumns - 1);
            if (!placed.empty() && place.row <= placed.back().place.row) {
                losses.Note("lines past row 15 dropped", captionIndex, caption.GetBeginTime());
                continue;
            }
        }
        placed.push_back({lines[static_cast<std::size_t>(i)], place});
    }
    return placed;
}

} // namespace captionformats::cea608
