#include "captionformats/DirectConversion.h"

#include "scc/SccCaptionReader.h"
#include "scc/SccTimecode.h"
#include "srt/SrtCueReader.h"
#include "srt/SrtCueWriter.h"
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

// Gives the conversion what was read of a stream of that format and, when the
// read succeeded, the bytes written with what the target format could not carry.
void Finish(Conversion& conversion, zelcaptioning::StreamFormat format, DiagnosticLog& readLog,
            const LossReport& losses, std::string out, const WriteOptions& writeOptions) {
    conversion.read.streamFormat = format;
    readLog.TakeInto(conversion.read);
    if (conversion.read.Succeeded()) {
        DiagnosticLog writeLog(writeOptions.fileName);
        losses.ReportInto(writeLog);
        conversion.written.bytes = std::move(out);
        writeLog.TakeInto(conversion.written);
    }
}

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
    Finish(conversion, kStreamFormat_OpenCaptions, readLog, losses, std::move(out), writeOptions);
    return conversion;
}

// Writes each caption the CEA-608 decoder ends as a SubRip cue at once. The
// SubRip writer orders captions by begin time, so a caption that begins
// before the one before it (time codes that run backwards) stops the direct
// path.
class SccToSrtSink final : public cea608::DecodedCaptionSink {
public:
    SccToSrtSink(std::string& out, LossReport& losses)
        : writer_(out, losses) {}

    void Caption(std::int64_t beginFrame, std::int64_t endFrame, CaptionType type,
                 const cea608::CaptionMemory& screen) override {
        const zelmediatypes::TickTime begin = scc::TimeOfFrame(beginFrame);
        if (captions_ > 0 && begin < previousBegin_) {
            outOfOrder_ = true;
        }
        if (!outOfOrder_) {
            const std::size_t lines = screen.AppendLines(text_);
            writer_.WriteLines(begin, scc::TimeOfFrame(endFrame), type,
                               cea608::CaptionMemory::LineStyle(), text_, lines, captions_);
            text_.Clear();
        }
        previousBegin_ = begin;
        ++captions_;
    }

    std::size_t Captions() const { return captions_; }
    bool OutOfOrder() const { return outOfOrder_; }

private:
    srt::SrtCueWriter writer_;
    CaptionTextBuilder text_;
    std::size_t captions_ = 0;
    zelmediatypes::TickTime previousBegin_;
    bool outOfOrder_ = false;
};

std::optional<Conversion> SccToSrt(std::string_view bytes, const ReadOptions& readOptions,
                                   const WriteOptions& writeOptions) {
    Conversion conversion;
    DiagnosticLog readLog(readOptions.fileName);
    LossReport losses;
    std::string out;
    // SubRip output is about half as long as its SCC input.
    out.reserve(bytes.size() / 2 + 64);
    SccToSrtSink sink(out, losses);
    scc::ReadSccCaptions(bytes, readLog, sink);
    if (sink.OutOfOrder()) {
        return std::nullopt;
    }
    conversion.captionCount = sink.Captions();
    Finish(conversion, kStreamFormat_CEA608, readLog, losses, std::move(out), writeOptions);
    return conversion;
}

} // namespace

std::optional<Conversion> ConvertDirectly(CaptionFileFormat from, CaptionFileFormat to,
                                          std::string_view bytes, const ReadOptions& readOptions,
                                          const WriteOptions& writeOptions) {
    if (from == CaptionFileFormat::kSrt && to == CaptionFileFormat::kWebVtt) {
        return SrtToWebVtt(bytes, readOptions, writeOptions);
    }
    if (from == CaptionFileFormat::kScc && to == CaptionFileFormat::kSrt) {
        return SccToSrt(bytes, readOptions, writeOptions);
    }
    return std::nullopt;
}

} // namespace captionformats
