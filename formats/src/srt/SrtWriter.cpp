#include "captionformats/SrtWriter.h"

#include "common/CaptionOrder.h"
#include "srt/SrtCueWriter.h"

namespace captionformats {

using namespace zelcaptioning;

WriteResult SrtWriter::Write(const std::vector<CaptionPtr>& captions,
                             const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    WriteResult result;
    srt::SrtCueWriter writer(result.bytes, losses);
    const std::vector<CaptionPtr> sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        writer.Write(*sorted[index], index);
    }
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
