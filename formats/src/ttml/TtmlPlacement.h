#pragma once

#include "ttml/TtmlStyle.h"

#include <optional>
#include <string>
#include <tuple>

namespace captionformats::ttml {

// Where a paragraph's lines go, from the computed style of its region and its
// own text alignment. No region, or a region without origin and extent, puts
// the lines on the bottom row of the anchor grid. A region covering the whole
// area puts them on the grid row its displayAlign names; a full-width band on
// the top edge (displayAlign before) or the bottom edge (after) on the top or
// bottom row. Any other region makes them free at its origin, exact for
// displayAlign before and approximated (and reported) otherwise. The column of
// a grid anchor follows the text alignment.
struct TtmlPlacement {
    zelcaptioning::ParagraphStyleAttributes style;
    std::optional<zelcaptioning::Position> firstLinePosition;
    std::optional<std::string> approximation;
};

TtmlPlacement PlacementOfRegion(const TtmlStyle& computed, bool hasRegion, std::size_t lineCount);

// The region attributes (origin, extent, displayAlign) for a placement, the
// inverse of PlacementOfRegion; nothing for a grid anchor with no region.
struct RegionGeometry {
    std::string origin;
    std::string extent;
    std::string displayAlign;
    friend bool operator<(const RegionGeometry& a, const RegionGeometry& b) {
        return std::tie(a.origin, a.extent, a.displayAlign) <
               std::tie(b.origin, b.extent, b.displayAlign);
    }
};
RegionGeometry RegionOfPlacement(const zelcaptioning::ParagraphStyleAttributes& style,
                                 const zelcaptioning::Position& firstLinePosition, bool& exact);

} // namespace captionformats::ttml
