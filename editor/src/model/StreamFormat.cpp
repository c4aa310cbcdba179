#include "zelcaptioning/StreamFormat.h"

#include "zelcore/Localization.h"

#include <ostream>

namespace zelcaptioning {

bool IsRollUp(CaptionType type) {
    return type == kCaptionType_RollUp2 || type == kCaptionType_RollUp3 ||
           type == kCaptionType_RollUp4;
}

bool IsTeletext(StreamFormat format) {
    return format == kStreamFormat_Teletext;
}

bool IsOpenCaptions(StreamFormat format) {
    return format == kStreamFormat_OpenCaptions;
}

int GetCaptionRows(StreamFormat format) {
    switch (format) {
    case kStreamFormat_OpenCaptions:
        return 0;
    case kStreamFormat_Teletext:
        return 23; // display rows 1 to 23 of a page; row 0 is the header
    default:
        return 15;
    }
}

int GetCaptionColumns(StreamFormat format, bool wideScreen) {
    switch (format) {
    case kStreamFormat_OpenCaptions:
        return 0;
    case kStreamFormat_Teletext:
        return 40;
    case kStreamFormat_CEA708:
        return wideScreen ? 42 : 32;
    default:
        return 32;
    }
}

void GetCaptionRowsAndColumns(StreamFormat format, int& rows, int& columns, bool wideScreen) {
    rows = GetCaptionRows(format);
    columns = GetCaptionColumns(format, wideScreen);
}

bool GetSupportedCaptionTypes(StreamFormat format, std::set<CaptionType>& types) {
    types.clear();
    switch (format) {
    case kStreamFormat_CEA608:
    case kStreamFormat_CEA708:
        types = {kCaptionType_PopOn, kCaptionType_RollUp2, kCaptionType_RollUp3,
                 kCaptionType_RollUp4, kCaptionType_PaintOn};
        return true;
    case kStreamFormat_Teletext:
        types = {kCaptionType_Subtitle};
        return true;
    case kStreamFormat_OpenCaptions:
        types = {kCaptionType_Open};
        return true;
    default:
        return false;
    }
}

zelcore::UTF16String GetCaptionTypeDescription(CaptionType type) {
    switch (type) {
    case kCaptionType_PopOn:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/PopOn=Pop-On");
    case kCaptionType_RollUp2:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/RollUp2=Roll-Up, 2 Lines");
    case kCaptionType_RollUp3:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/RollUp3=Roll-Up, 3 Lines");
    case kCaptionType_RollUp4:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/RollUp4=Roll-Up, 4 Lines");
    case kCaptionType_PaintOn:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/PaintOn=Paint-On");
    case kCaptionType_Subtitle:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/Subtitle=Subtitle");
    case kCaptionType_Open:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/Open=Open Caption");
    default:
        return zelcore::Localize("$$$/Corvala/Captioning/CaptionType/None=None");
    }
}

zelcore::UTF16String GetFullStreamFormatLabel(StreamFormat format) {
    switch (format) {
    case kStreamFormat_CEA608:
        return zelcore::Localize("$$$/Corvala/Captioning/Format/CEA608=CEA-608 Closed Captions");
    case kStreamFormat_CEA708:
        return zelcore::Localize("$$$/Corvala/Captioning/Format/CEA708=CEA-708 Closed Captions");
    case kStreamFormat_Teletext:
        return zelcore::Localize("$$$/Corvala/Captioning/Format/Teletext=Teletext Subtitles");
    case kStreamFormat_OpenCaptions:
        return zelcore::Localize("$$$/Corvala/Captioning/Format/Open=Open Captions");
    default:
        return zelcore::Localize("$$$/Corvala/Captioning/Format/None=No Captions");
    }
}

std::ostream& operator<<(std::ostream& os, StreamFormat format) {
    return os << zelcore::ToUTF8(GetFullStreamFormatLabel(format)) << " ("
              << static_cast<std::uint32_t>(format) << ')';
}

std::ostream& operator<<(std::ostream& os, CaptionType type) {
    return os << zelcore::ToUTF8(GetCaptionTypeDescription(type)) << " ("
              << static_cast<std::int32_t>(type) << ')';
}

} // namespace zelcaptioning
