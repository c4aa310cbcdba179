#include "HSL/CaptionRendering.h"
#include "SpanFonts.h"

#include "zelui/drawbot/Drawbot.h"

#include <algorithm>
#include <cmath>

namespace HSL {

const zelcore::UTF16String kDefaultCaptionFontFamily = u"DejaVu Sans";

void RefreshCaptionSizeInfo(const zelcaptioning::CaptionPtr& caption,
                            zelui::drawbot::Drawbot& drawbot) {
    if (!caption) {
        return;
    }
    for (std::uint64_t p = 0; p < caption->GetNumParagraphs(); ++p) {
        const zelcaptioning::CaptionTextParagraphPtr paragraph =
            caption->GetCaptionTextParagraph(p);
        if (!paragraph) {
            continue;
        }
        float widthPx = 0.0f;
        float heightPx = 0.0f;
        for (std::uint64_t s = 0; s < paragraph->GetNumSpans(); ++s) {
            const zelcaptioning::CaptionTextSpanPtr span = paragraph->GetCaptionTextSpan(s);
            if (!span) {
                continue;
            }
            const zelcore::UTF16String text = span->GetCaptionText();
            const auto metrics =
                drawbot.MeasureString(zelcore::View(text), detail::FontOf(span->StyleAttributes()));
            widthPx += metrics.widthPixels;
            heightPx = std::max(heightPx, metrics.heightPixels);
        }
        if (heightPx == 0.0f) {
            // A line without spans is as high as an empty line in the default font.
            heightPx = drawbot.MeasureString(u"", detail::FontOf({})).heightPixels;
        }
        paragraph->SetMeasuredLineSize(static_cast<std::uint64_t>(std::ceil(widthPx)),
                                       static_cast<std::uint64_t>(std::ceil(heightPx)));
    }
}

} // namespace HSL
