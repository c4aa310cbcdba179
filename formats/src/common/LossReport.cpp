#include "common/LossReport.h"

#include "common/ClockText.h"

namespace captionformats {

using zelcaptioning::TextSpanAttributes;

LossReport::Tally& LossReport::TallyOf(std::string_view what) {
    for (const Recent& recent : recent_) {
        if (recent.tally != nullptr && recent.what == what) {
            return *recent.tally;
        }
    }
    auto found = losses_.find(what);
    if (found == losses_.end()) {
        found = losses_.emplace(std::string(what), Tally{}).first;
    }
    recent_[nextRecent_] = {found->first, &found->second};
    nextRecent_ = (nextRecent_ + 1) % recent_.size();
    return found->second;
}

void LossReport::NoteSpanLosses(const TextSpanAttributes& attributes, const SpanCapabilities& kept,
                                std::size_t captionIndex, zelmediatypes::TickTime begin) {
    static const TextSpanAttributes defaults;
    if (attributes == defaults) {
        return;
    }
    auto note = [&](bool isKept, bool differs, const char* what) {
        if (!isKept && differs) {
            Note(what, captionIndex, begin);
        }
    };
    note(kept.bold, attributes.IsBolded(), "bold dropped");
    note(kept.italic, attributes.IsItalicized(), "italics dropped");
    note(kept.underline, attributes.IsUnderlined(), "underline dropped");
    const zelcaptioning::CaptioningColor& text = attributes.textColor;
    const zelcaptioning::CaptioningColor& defaultText = defaults.textColor;
    note(kept.textColor,
         text.red != defaultText.red || text.green != defaultText.green ||
             text.blue != defaultText.blue,
         "text colour dropped");
    note(kept.textOpacity, text.alpha != defaultText.alpha, "text opacity dropped");
    note(kept.backgroundColor, attributes.backgroundColor != defaults.backgroundColor,
         "background colour dropped");
    note(kept.fontName, attributes.GetFontName() != defaults.GetFontName(), "font name dropped");
    note(kept.fontSize, attributes.GetFontSize() != defaults.GetFontSize(), "font size dropped");
    note(kept.edge,
         attributes.GetTextEdge() != defaults.GetTextEdge() ||
             attributes.edgeColor != defaults.edgeColor || attributes.edgeWidth != 0.0f,
         "text edge dropped");
}

void LossReport::ReportInto(DiagnosticLog& log) const {
    for (const auto& [what, tally] : losses_) {
        if (tally.captions == 0) {
            continue;
        }
        log.Warn({}, what + " in " + std::to_string(tally.captions) +
                         (tally.captions == 1 ? " caption" : " captions") + " (first: caption " +
                         std::to_string(tally.firstCaptionIndex + 1) + " at " +
                         FormatClockMilliseconds(tally.firstBegin, '.') + ")");
    }
}

} // namespace captionformats
