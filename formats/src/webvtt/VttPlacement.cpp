#include "webvtt/VttPlacement.h"

#include "common/KeypadAnchor.h"

#include <algorithm>

namespace captionformats::webvtt {

using namespace zelcaptioning;

namespace {

// Rationals are only ever compared with rationals here: Boost 1.74's mixed
// comparisons recurse without end under C++20's reversed operator candidates.

// The rows of an area the writer's grid and our approximations assume.
constexpr std::int64_t kAssumedRows = 15;

TextAlignmentType AlignmentOf(VttCue::Align align) {
    switch (align) {
    case VttCue::Align::kStart:
    case VttCue::Align::kLeft:
        return kTextAlignment_Left;
    case VttCue::Align::kEnd:
    case VttCue::Align::kRight:
        return kTextAlignment_Right;
    case VttCue::Align::kCenter:
        break;
    }
    return kTextAlignment_Center;
}

struct Axis {
    std::optional<int> gridIndex;     // 0, 1 or 2 on the grid
    std::optional<Rational> fraction; // of the area, when off the grid
};

Axis Column(const VttCue& cue, TextAlignmentType alignment, std::vector<std::string>& notes) {
    if (!cue.position) {
        return {static_cast<int>(alignment), std::nullopt};
    }
    const Rational& position = cue.position->exact;
    if (cue.positionAlign == VttCue::PositionAlign::kAuto) {
        for (int column = 0; column < 3; ++column) {
            if (position == Rational(column * 50)) {
                return {column, std::nullopt};
            }
        }
    }
    if (cue.positionAlign != VttCue::PositionAlign::kLineLeft) {
        notes.push_back("position not aligned line-left taken as the left edge");
    }
    return {std::nullopt, position / 100};
}

Axis Row(const VttCue& cue, std::vector<std::string>& notes) {
    if (!cue.line) {
        return {2, std::nullopt};
    }
    const Rational& line = cue.line->exact;
    if (cue.snapToLines) {
        if (line == Rational(0)) {
            return {0, std::nullopt};
        }
        if (line == Rational(-1)) {
            return {2, std::nullopt};
        }
        notes.push_back("line number approximated on a 15-line area");
        const Rational row = line >= Rational(0) ? line : Rational(kAssumedRows) + line;
        return {std::nullopt, std::clamp(row / kAssumedRows, Rational(0), Rational(1))};
    }
    if (line == Rational(50) && cue.lineAlign == VttCue::LineAlign::kCenter) {
        return {1, std::nullopt};
    }
    if (cue.lineAlign != VttCue::LineAlign::kStart) {
        notes.push_back("line not aligned at its start taken as the top edge");
    }
    return {std::nullopt, line / 100};
}

// The fraction as a percentage with up to nine decimals; `exact` turns false
// when more would be needed.
std::string Percent(const Rational& fraction, bool& exact) {
    const Rational percent = fraction * 100;
    std::string text = std::to_string(percent.numerator() / percent.denominator());
    Rational rest = percent - Rational(percent.numerator() / percent.denominator());
    if (rest != Rational(0)) {
        text += '.';
        for (int digit = 0; digit < 9 && rest != Rational(0); ++digit) {
            rest *= 10;
            const std::int64_t whole = rest.numerator() / rest.denominator();
            text += static_cast<char>('0' + whole);
            rest -= whole;
        }
        exact = exact && rest == Rational(0);
    }
    return text + '%';
}

} // namespace

CuePlacement PlacementOfCue(const VttCue& cue) {
    CuePlacement placement;
    const TextAlignmentType alignment = AlignmentOf(cue.align);
    placement.style.SetTextAlignment(alignment);
    const Axis column = Column(cue, alignment, placement.approximations);
    const Axis row = Row(cue, placement.approximations);
    if (column.gridIndex && row.gridIndex) {
        placement.style.SetAnchorID(*row.gridIndex * 3 + *column.gridIndex);
        return placement;
    }
    placement.style.SetAnchorID(kAnchorID_Free);
    const Rational x = column.fraction ? *column.fraction : Rational(*column.gridIndex, 2);
    const Rational y = row.fraction          ? *row.fraction
                       : *row.gridIndex == 2 ? Rational(kAssumedRows - 1, kAssumedRows)
                                             : Rational(*row.gridIndex, 2);
    if (!column.fraction && column.gridIndex != 0) {
        placement.approximations.push_back("horizontal place approximated by the left edge");
    }
    if (!row.fraction && row.gridIndex != 0) {
        placement.approximations.push_back("vertical place approximated by the top edge");
    }
    placement.firstLinePosition =
        Position(std::clamp(x, Rational(0), Rational(1)), std::clamp(y, Rational(0), Rational(1)));
    return placement;
}

std::string SettingsOfPlacement(const ParagraphStyleAttributes& style,
                                const Position& firstLinePosition,
                                std::vector<std::string>& approximations) {
    std::string settings;
    const AnchorID anchor = style.GetAnchorID();
    const TextAlignmentType alignment = style.GetTextAlignment();
    if (IsGridAnchor(anchor)) {
        const int row = anchor / 3;
        const int column = anchor % 3;
        if (row == 0) {
            settings += " line:0";
        } else if (row == 1) {
            settings += " line:50%,center";
        }
        if (column != static_cast<int>(alignment)) {
            settings += " position:" + std::to_string(column * 50) + '%';
        }
    } else {
        Position position = firstLinePosition;
        if (position == kPosition_Uninitialized) {
            approximations.push_back("unplaced free line written at the top left");
            position = Position(Rational(0), Rational(0));
        }
        const auto clamp01 = [](const Rational& value) {
            return std::clamp(value, Rational(0), Rational(1));
        };
        bool exact = clamp01(position.GetX()) == position.GetX() &&
                     clamp01(position.GetY()) == position.GetY();
        settings += " position:" + Percent(clamp01(position.GetX()), exact) +
                    ",line-left line:" + Percent(clamp01(position.GetY()), exact) + ",start";
        if (!exact) {
            approximations.push_back("free position rounded into the area to nine decimals");
        }
    }
    if (alignment == kTextAlignment_Left) {
        settings += " align:left";
    } else if (alignment == kTextAlignment_Right) {
        settings += " align:right";
    }
    return settings;
}

} // namespace captionformats::webvtt
