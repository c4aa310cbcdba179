#include "captionformats/SrtReader.h"

#include "srt/SrtCueReader.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

// Makes each cue an open caption.
class CaptionSink final : public srt::CueSink {
public:
    void Cue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
             const ParagraphStyleAttributes& style, CaptionTextBuilder& text,
             std::size_t lineCount) override {
        std::vector<CaptionTextParagraphPtr> paragraphs;
        if (lineCount > 0) {
            paragraphs = text.TakeParagraphs(style);
        }
        captions.push_back(MakeCaption(begin, end, kCaptionType_Open, std::move(paragraphs)));
    }

    std::vector<CaptionPtr> captions;
};

} // namespace

ReadResult SrtReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    ReadResult result;
    result.streamFormat = kStreamFormat_OpenCaptions;
    CaptionSink sink;
    srt::ReadSrtCues(bytes, log, sink);
    result.captions = std::move(sink.captions);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
