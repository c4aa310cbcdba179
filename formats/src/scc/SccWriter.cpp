#include "captionformats/SccWriter.h"

#include "common/CaptionOrder.h"
#include "scc/SccScheduler.h"

namespace captionformats {

WriteResult SccWriter::Write(const std::vector<zelcaptioning::CaptionPtr>& captions,
                             const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    LossReport losses;
    scc::SccScheduler scheduler(losses);
    const auto sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        const zelcaptioning::Caption* next =
            index + 1 < sorted.size() ? sorted[index + 1].get() : nullptr;
        scheduler.Add(*sorted[index], index, next);
    }
    WriteResult result;
    result.bytes = scheduler.Timeline().ToScc(options.dropFrameTimecode);
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
