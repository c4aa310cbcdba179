#include "captionformats/SccReader.h"

#include "common/CaptionTextBuilder.h"
#include "scc/SccCaptionReader.h"
#include "scc/SccTimecode.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

// Makes each decoded caption a caption of the model.
class CaptionSink final : public cea608::DecodedCaptionSink {
public:
    void Caption(std::int64_t beginFrame, std::int64_t endFrame, CaptionType type,
                 const cea608::CaptionMemory& screen) override {
        captions.push_back(MakeCaption(scc::TimeOfFrame(beginFrame), scc::TimeOfFrame(endFrame),
                                       type, screen.ToParagraphs()));
    }

    std::vector<CaptionPtr> captions;
};

} // namespace

ReadResult SccReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    ReadResult result;
    result.streamFormat = kStreamFormat_CEA608;
    CaptionSink sink;
    scc::ReadSccCaptions(bytes, log, sink);
    result.captions = std::move(sink.captions);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
