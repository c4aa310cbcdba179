#include "captionformats/TtmlReader.h"

#include "common/CaptionTextBuilder.h"
#include "ttml/TtmlDocument.h"

namespace captionformats {

ReadResult TtmlReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    ReadResult result;
    result.streamFormat = zelcaptioning::kStreamFormat_OpenCaptions;
    result.captions = ttml::TtmlDocument(bytes, log).Captions();
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
