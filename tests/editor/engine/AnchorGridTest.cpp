#include "caption_editor/AnchorGrid.h"

#include <gtest/gtest.h>

#include <utility>

using caption_editor::AnchorFromCell;
using caption_editor::CellFromAnchor;

TEST(AnchorGrid, CellsAndAnchorsMapBothWays) {
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            const auto anchor = AnchorFromCell(column, row);
            EXPECT_EQ(anchor, row * 3 + column);
            int c = -9, r = -9;
            CellFromAnchor(anchor, c, r);
            EXPECT_EQ(std::make_pair(c, r), std::make_pair(column, row));
        }
    }
    EXPECT_EQ(AnchorFromCell(1, 2), 7);
    EXPECT_EQ(AnchorFromCell(3, 0), -1) << "a click past the third cell";
    EXPECT_EQ(AnchorFromCell(0, -1), -1);
}

TEST(AnchorGrid, SpecialAnchorsShowTheCentreAndUnknownOnesTheCorner) {
    for (int anchor : {9, -1, -2}) {
        int c = -9, r = -9;
        CellFromAnchor(anchor, c, r);
        EXPECT_EQ(std::make_pair(c, r), std::make_pair(1, 1)) << anchor;
    }
    for (int anchor : {10, -3, 1000}) {
        int c = -9, r = -9;
        CellFromAnchor(anchor, c, r);
        EXPECT_EQ(std::make_pair(c, r), std::make_pair(0, 0)) << anchor;
    }
}
