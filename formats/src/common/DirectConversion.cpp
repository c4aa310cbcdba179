#include "captionformats/DirectConversion.h"

#include "srt/SrtCueReader.h"
#include "webvtt/VttCueWriter.h"

namespace captionformats {

using namespace zelcaptioning;

namespace {

// Writes each SubRip cue as a WebVTT cue as soon as it is read. The WebVTT
// writer orders captions by begin time, so a cue that begins before the one
// before it stops the direct path.
class SrtToVttSink final : public srt::CueSink {
public:
    SrtToVttSink(std::string& out, LossReport& losses)
        : writer_(out, losses) {}

    void Cue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
             const ParagraphStyleAttributes& style, CaptionTextBuilder& text,
             std::size_t lineCount) override {
        if (cues_ > 0 && begin < previousBegin_) {
            outOfOrder_ = true;
        }
        if (!outOfOrder_) {
            writer_.WriteOpenCaption(begin, end, style, text, lineCount, cues_);
        }
        text.Clear();
        previousBegin_ = begin;
        ++cues_;
    }

    bool OutOfOrder() const { return outOfOrder_; }

private:
    webvtt::VttCueWriter writer_;
    std::size_t cues_ = 0;
    zelmediatypes::TickTime previousBegin_;
    bool outOfOrder_ = false;
};

std::optional<Conversion> SrtToWebVtt(std::string_view bytes, const ReadOptions& readOptions,
                                      const WriteOptions& writeOptions) {
    Conversion conversion;
    DiagnosticLog readLog(readOptions.fileName);
    LossReport losses;
    std::string out(webvtt::kSignature);
    // WebVTT output is about as long as its SubRip input.
    out.reserve(bytes.size() + bytes.size() / 8 + 64);
    SrtToVttSink sink(out, losses);
    conversion.captionCount = srt::ReadSrtCues(bytes, readLog, sink);
    if (sink.OutOfOrder()) {
        return std::nullopt;
    }
    conversion.read.streamFormat = kStreamFormat_OpenCaptions;
    readLog.TakeInto(conversion.read);
    if (conversion.read.Succeeded()) {
        DiagnosticLog writeLog(writeOptions.fileName);
        losses.ReportInto(writeLog);
        conversion.written.bytes = std::move(out);
        writeLog.TakeInto(conversion.written);
    }
    return conversion;
}

} // namespace

std::optional<Conversion> ConvertDirectly(CaptionFileFormat from, CaptionFileFormat to,
                                          std::string_view bytes, const ReadOptions& readOptions,
                                          const WriteOptions& writeOptions) {
    if (from == CaptionFileFormat::kSrt && to == CaptionFileFormat::kWebVtt) {
        return SrtToWebVtt(bytes, readOptions, writeOptions);
    }
    return std::nullopt;
}

} // namespace captionformats
