#pragma once

// Seeded random captions within what a format can carry, and a comparison that
// says where two caption lists differ.
#include "zelcaptioning/Caption.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace test {

struct CaptionCapabilities {
    zelcaptioning::CaptionType type = zelcaptioning::kCaptionType_Open;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    std::vector<zelcaptioning::CaptioningColor> textColors; // besides the default white
    // Anchors 0 to 8; with alignmentFollowsColumn each line is aligned to its
    // anchor's side, else the alignment is drawn on its own.
    bool gridAnchors = false;
    bool alignmentFollowsColumn = false;
    // Anchor 9 with x and y in steps of 1/precision of the area; the first line
    // is placed, the others stack below it.
    bool freePositions = false;
    std::int64_t freePositionPrecision = 1000;
    int maxLines = 2;
    int maxLineLength = 32;
    std::u32string alphabet = U"abcXYZ019 .,-'!?";
    std::int64_t timeStepTicks = 0; // times are whole multiples of it
};

std::vector<zelcaptioning::CaptionPtr> RandomCaptions(std::mt19937& random, int count,
                                                      const CaptionCapabilities& capabilities);

// Equal times, types, and paragraphs with equal styles, positions and spans.
::testing::AssertionResult SameCaptions(const std::vector<zelcaptioning::CaptionPtr>& expected,
                                        const std::vector<zelcaptioning::CaptionPtr>& actual);

} // namespace test
