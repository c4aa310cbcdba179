#pragma once

#include "common/LossReport.h"
#include "zelcaptioning/CaptionTextParagraph.h"

#include <cstdint>
#include <string>
#include <vector>

namespace captionformats::cea608 {

// Byte pairs with parity, as sent; a unit is sent in consecutive frames (a
// doubled code must not be split).
using Word = std::uint16_t;
using Unit = std::vector<Word>;

// A control code sent twice, as CEA-608 asks.
Unit Doubled(std::uint8_t first, std::uint8_t second);

// Where a caption's line goes on the 32 × 15 grid.
struct RowPlacement {
    int row = 15;   // 1 to 15
    int column = 0; // 0 to 31
};

// Encodes one line: the preamble address code (with a tab offset for columns
// between indents), the characters, and the mid-row and background codes for
// style changes. A mid-row code takes the place of a space with the new style
// where the text has one; where it has none a space is added, and that is
// reported. Characters outside the CEA-608 sets become '?', reported.
class Cea608RowEncoder {
public:
    Cea608RowEncoder(LossReport& losses, std::size_t captionIndex, zelmediatypes::TickTime begin)
        : losses_(losses)
        , captionIndex_(captionIndex)
        , begin_(begin) {}

    std::vector<Unit> Encode(const zelcaptioning::CaptionTextParagraph& line, RowPlacement place);

private:
    struct Cell {
        char32_t character;
        zelcaptioning::TextSpanAttributes attributes;
    };
    struct Style {
        zelcaptioning::CaptioningColor color = zelcaptioning::kCaptioningColor_White;
        bool italic = false;
        bool underline = false;
        zelcaptioning::CaptioningColor background = zelcaptioning::kCaptioningColor_Transparent;
        friend bool operator==(const Style&, const Style&) = default;
    };

    std::vector<Cell> CellsOf(const zelcaptioning::CaptionTextParagraph& line);
    Style LegalStyle(const zelcaptioning::TextSpanAttributes& attributes);
    void SendPreamble(RowPlacement place, const Style& first, bool& styled);
    // The mid-row codes that turn `from` into `to` (one or two).
    std::vector<Unit> MidRowCodes(const Style& from, const Style& to) const;
    void SendCharacter(char32_t character);
    void FlushPendingByte();
    void Lose(std::string_view what) { losses_.Note(what, captionIndex_, begin_); }

    LossReport& losses_;
    std::size_t captionIndex_;
    zelmediatypes::TickTime begin_;
    std::vector<Unit> units_;
    int pendingByte_ = -1; // a basic character waiting for its pair
};

} // namespace captionformats::cea608
