#include "TypicalFiles.h"

#include <map>
#include <string>

namespace bench_formats {

using namespace captionformats;
using namespace zelcaptioning;

std::vector<CaptionPtr> TypicalCaptions(CaptionFileFormat format, int count) {
    const zelmediatypes::TickTime frame(zelmediatypes::kTicksPerSecond * 1001 / 30000);
    std::vector<CaptionPtr> captions;
    for (int i = 0; i < count; ++i) {
        CaptionPtr caption(new Caption);
        caption->SetBeginTime(frame * (60LL * i + 30));
        caption->SetEndTime(frame * (60LL * i + 75));
        caption->SetCaptionType(format == CaptionFileFormat::kScc      ? kCaptionType_PopOn
                                : format == CaptionFileFormat::kEbuStl ? kCaptionType_Subtitle
                                                                       : kCaptionType_Open);
        for (int line = 0; line < 2; ++line) {
            CaptionTextParagraphPtr paragraph(new CaptionTextParagraph);
            TextSpanAttributes italic;
            italic.SetItalicized(true);
            paragraph->AppendCaptionTextSpan(
                new CaptionTextSpan(zelcore::ToUTF16("Caption number "), {}));
            paragraph->AppendCaptionTextSpan(new CaptionTextSpan(
                zelcore::ToUTF16(std::to_string(i) + (line ? " ends" : " begins")), italic));
            if (format == CaptionFileFormat::kScc || format == CaptionFileFormat::kEbuStl) {
                ParagraphStyleAttributes style;
                style.SetAnchorID(kAnchorID_Free);
                style.SetTextAlignment(kTextAlignment_Left);
                paragraph->SetParagraphStyleAttributes(style);
                paragraph->SetCaptionPosition(Position(Rational(2, 32), Rational(12 + line, 15)));
            }
            caption->AppendCaptionTextParagraph(paragraph);
        }
        captions.push_back(caption);
    }
    return captions;
}

const std::string& FileOf(CaptionFileFormat format, int count) {
    static std::map<std::pair<CaptionFileFormat, int>, std::string> files;
    auto [it, inserted] = files.try_emplace({format, count});
    if (inserted) {
        it->second = MakeWriter(format)->Write(TypicalCaptions(format, count), {}).bytes;
    }
    return it->second;
}

} // namespace bench_formats
