#pragma once

#include "zelcore/UTF16String.h"

#include <cstdint>
#include <iosfwd>
#include <set>

namespace zelcaptioning {

// A caption stream's format. Closed-caption standards carry their number;
// the others are four-character codes.
enum StreamFormat : std::uint32_t {
    kStreamFormat_None = 0,
    kStreamFormat_CEA608 = 608,
    kStreamFormat_CEA708 = 708,
    kStreamFormat_Teletext = 0x54545854,     // 'TTXT'
    kStreamFormat_OpenCaptions = 0x4F50454E, // 'OPEN'
};

// How a caption is brought on screen.
enum CaptionType : std::int32_t {
    kCaptionType_None = 0,
    kCaptionType_PopOn = 1,
    kCaptionType_RollUp2 = 2,
    kCaptionType_RollUp3 = 3,
    kCaptionType_RollUp4 = 4,
    kCaptionType_PaintOn = 5,
    kCaptionType_Subtitle = 6, // a teletext subtitle page
    kCaptionType_Open = 7,     // burnt into the picture
};

bool IsRollUp(CaptionType type);
bool IsTeletext(StreamFormat format);
bool IsOpenCaptions(StreamFormat format);

// The character grid of a format. `wideScreen` selects the 16:9 grid where a
// format has one (CEA-708: 42 columns instead of 32). Open captions have no
// grid (0 by 0); no format or an unknown one gives the CEA-608 grid, 15 by 32.
int GetCaptionRows(StreamFormat format);
int GetCaptionColumns(StreamFormat format, bool wideScreen);
void GetCaptionRowsAndColumns(StreamFormat format, int& rows, int& columns, bool wideScreen);

// Fills `types` with the caption types the format supports, in enumeration
// order; false (and an empty set) for no format or an unknown one.
bool GetSupportedCaptionTypes(StreamFormat format, std::set<CaptionType>& types);

// Display strings, localised.
zelcore::UTF16String GetCaptionTypeDescription(CaptionType type);
zelcore::UTF16String GetFullStreamFormatLabel(StreamFormat format);

std::ostream& operator<<(std::ostream& os, StreamFormat format);
std::ostream& operator<<(std::ostream& os, CaptionType type);

} // namespace zelcaptioning
