#include "captionformats/WebVttReader.h"

#include "captionformats/WebVttDocument.h"
#include "common/CaptionTextBuilder.h"
#include "common/ClockText.h"
#include "webvtt/VttCueText.h"
#include "webvtt/VttPlacement.h"

#include <algorithm>

namespace captionformats {

using namespace zelcaptioning;

namespace {

void ReportDroppedSettings(const VttCue& cue, DiagnosticLog& log) {
    const SourceLocation where = SourceLocation::AtLine(cue.timingLine);
    if (cue.region) {
        log.Warn(where, "region dropped (the cue is placed by its own settings)");
    }
    if (cue.vertical != VttCue::Vertical::kHorizontal) {
        log.Warn(where, "vertical text dropped (written horizontally)");
    }
    if (cue.size != 100.0) {
        log.Warn(where, "cue box size dropped");
    }
}

} // namespace

ReadResult WebVttReader::Read(std::string_view bytes, const ReadOptions& options) const {
    VttParseResult parsed = ParseWebVttDocument(bytes, options);
    ReadResult result;
    result.streamFormat = kStreamFormat_OpenCaptions;
    result.errors = std::move(parsed.errors);
    DiagnosticLog log(options.fileName);
    if (!parsed.document.styleSheets.empty()) {
        log.Warn({}, "STYLE blocks ignored (CSS is not applied)");
    }
    for (const VttCue& cue : parsed.document.cues) {
        CaptionTextBuilder builder;
        webvtt::VttCueText(builder, log, cue.textFirstLine).Parse(cue.text);
        ReportDroppedSettings(cue, log);
        const webvtt::CuePlacement placement = webvtt::PlacementOfCue(cue);
        for (const std::string& note : placement.approximations) {
            log.Warn(SourceLocation::AtLine(cue.timingLine), note);
        }
        std::vector<CaptionTextParagraphPtr> paragraphs;
        if (!cue.text.empty()) {
            paragraphs = builder.TakeParagraphs(placement.style);
        }
        if (placement.firstLinePosition && !paragraphs.empty()) {
            paragraphs.front()->SetCaptionPosition(*placement.firstLinePosition);
        }
        result.captions.push_back(MakeCaption(TimeFromMilliseconds(cue.startMilliseconds),
                                              TimeFromMilliseconds(cue.endMilliseconds),
                                              kCaptionType_Open, paragraphs));
    }
    std::vector<Diagnostic> conversionErrors;
    log.TakeInto(result.warnings, conversionErrors);
    result.warnings.insert(result.warnings.begin(), parsed.warnings.begin(), parsed.warnings.end());
    std::stable_sort(
        result.warnings.begin(), result.warnings.end(),
        [](const Diagnostic& a, const Diagnostic& b) { return a.location.line < b.location.line; });
    return result;
}

} // namespace captionformats
