#include "captionformats/WebVttWriter.h"

#include "common/CaptionOrder.h"
#include "webvtt/VttCueWriter.h"

namespace captionformats {

using namespace zelcaptioning;

WriteResult WebVttWriter::Write(const std::vector<CaptionPtr>& captions,
                                const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    WriteResult result;
    result.bytes = webvtt::kSignature;
    webvtt::VttCueWriter writer(result.bytes, losses);
    const std::vector<CaptionPtr> sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        writer.Write(*sorted[index], index);
    }
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
