#include "captionformats/DirectConversion.h"

#include "scc/SccCaptionReader.h"
#include "scc/SccTimecode.h"
#include "srt/SrtCueReader.h"
#include "srt/SrtCueWriter.h"
#include "srt/SrtEmphasis.h"
#include "webvtt/VttCueWriter.h"

#include <deque>

namespace captionformats {

using namespace zelcaptioning;

namespace {

// The bytes a direct conversion writes: kept whole, or handed on in pieces
// once a piece's worth has gathered.
class Output {
public:
    Output(std::size_t wholeSize, const std::function<void(std::string_view)>& pieces)
        : pieces_(pieces) {
        bytes_.reserve(pieces_ ? kPieceBytes + kPieceBytes / 4 : wholeSize);
    }

    std::string& Bytes() { return bytes_; }

    // Called between captions: a caption is never split across two pieces.
    void CaptionWritten() {
        if (pieces_ && bytes_.size() >= kPieceBytes) {
            pieces_(bytes_);
            bytes_.clear();
        }
    }

    // The bytes not yet handed on: given to `pieces` too where there is one.
    std::string Rest() {
        if (pieces_) {
            pieces_(bytes_);
            bytes_.clear();
        }
        return std::move(bytes_);
    }

private:
    // Small enough to stay in the processor's caches, large enough that
    // handing a piece on costs little beside making it.
    static constexpr std::size_t kPieceBytes = 64 * 1024;

    const std::function<void(std::string_view)>& pieces_;
    std::string bytes_;
};

// Writes each SubRip cue as a WebVTT cue as soon as it is read. The WebVTT
// writer orders captions by begin time, so a cue that begins before the one
// before it stops the direct path.
class SrtToVttSink final : public srt::CueSink {
public:
    SrtToVttSink(Output& out, LossReport& losses)
        : out_(out)
        , writer_(out.Bytes(), losses) {}

    void Cue(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
             const ParagraphStyleAttributes& style, CaptionTextBuilder& text,
             std::size_t lineCount) override {
        if (cues_ > 0 && begin < previousBegin_) {
            outOfOrder_ = true;
        }
        if (!outOfOrder_) {
            writer_.WriteOpenCaption(begin, end, style, text, lineCount, cues_);
            out_.CaptionWritten();
        }
        text.Clear();
        previousBegin_ = begin;
        ++cues_;
    }

    // A cue whose lines hold only text and emphasis tags is written straight
    // from them, without gathering its text; any other is left to Cue.
    bool CueLines(const srt::CueTiming& timing, std::span<const TextLine> lines) override {
        if (outOfOrder_ || (cues_ > 0 && timing.begin < previousBegin_) ||
            !writer_.WriteOpenCaptionLines(
                timing.begin, timing.end, timing.usualText, unplaced_, !lines.empty(),
                [lines](std::string& out, void (*escape)(std::string&, std::string_view)) {
                    return srt::AppendEmphasisLines(out, lines, escape);
                },
                cues_)) {
            return false;
        }
        out_.CaptionWritten();
        previousBegin_ = timing.begin;
        ++cues_;
        return true;
    }

    bool OutOfOrder() const { return outOfOrder_; }

private:
    Output& out_;
    webvtt::VttCueWriter writer_;
    const ParagraphStyleAttributes unplaced_; // a cue's lines without {\anN}
    std::size_t cues_ = 0;
    zelmediatypes::TickTime previousBegin_;
    bool outOfOrder_ = false;
};

// Gives the conversion what was read of a stream of that format and, when the
// read succeeded, the bytes written with what the target format could not carry.
void Finish(Conversion& conversion, zelcaptioning::StreamFormat format, DiagnosticLog& readLog,
            const LossReport& losses, Output& out, const WriteOptions& writeOptions) {
    conversion.read.streamFormat = format;
    readLog.TakeInto(conversion.read);
    if (conversion.read.Succeeded()) {
        DiagnosticLog writeLog(writeOptions.fileName);
        losses.ReportInto(writeLog);
        conversion.written.bytes = out.Rest();
        writeLog.TakeInto(conversion.written);
    }
}

std::optional<Conversion> SrtToWebVtt(std::string_view bytes, const ReadOptions& readOptions,
                                      const WriteOptions& writeOptions,
                                      const std::function<void(std::string_view)>& pieces) {
    Conversion conversion;
    DiagnosticLog readLog(readOptions.fileName);
    LossReport losses;
    // WebVTT output is about as long as its SubRip input.
    Output out(bytes.size() + bytes.size() / 8 + 64, pieces);
    out.Bytes() = webvtt::kSignature;
    SrtToVttSink sink(out, losses);
    conversion.captionCount = srt::ReadSrtCues(bytes, readLog, sink);
    if (sink.OutOfOrder()) {
        return std::nullopt;
    }
    Finish(conversion, kStreamFormat_OpenCaptions, readLog, losses, out, writeOptions);
    return conversion;
}

// Writes each caption the CEA-608 decoder ends as a SubRip cue at once. The
// SubRip writer orders captions by begin time, so a caption that begins
// before the one before it (time codes that run backwards) stops the direct
// path.
class SccToSrtSink final : public cea608::DecodedCaptionSink {
public:
    SccToSrtSink(Output& out, LossReport& losses)
        : out_(out)
        , writer_(out.Bytes(), losses) {}

    void Caption(std::int64_t beginFrame, std::int64_t endFrame, CaptionType type,
                 const cea608::CaptionMemory& screen) override {
        const zelmediatypes::TickTime begin = scc::TimeOfFrame(beginFrame);
        if (captions_ > 0 && begin < previousBegin_) {
            outOfOrder_ = true;
        }
        if (!outOfOrder_) {
            const zelmediatypes::TickTime end = scc::TimeOfFrame(endFrame);
            if (!writer_.WriteScreen(begin, end, type, lineStyle_, screen, captions_)) {
                lines_.Clear();
                screen.AppendLines(lines_);
                GatherSpans();
                writer_.WriteSpans(begin, end, type, lineStyle_, spans_, lineEnds_, captions_);
            }
            out_.CaptionWritten();
        }
        previousBegin_ = begin;
        ++captions_;
    }

    std::size_t Captions() const { return captions_; }
    bool OutOfOrder() const { return outOfOrder_; }

private:
    // The lines' runs as spans, runs of equal attributes joined as the
    // caption model's paragraphs join them.
    void GatherSpans() {
        spans_.clear();
        lineEnds_.clear();
        if (styles_.size() > kStylesKept) {
            styles_.clear(); // between captions: no span points into it
        }
        std::size_t start = 0;
        std::size_t run = 0;
        for (const std::size_t lineEnd : lines_.lineEnds) {
            const std::size_t lineStart = spans_.size();
            for (; run < lineEnd; ++run) {
                const cea608::CaptionMemory::Lines::Run& cells = lines_.runs[run];
                const TextSpanAttributes& attributes = AttributesOf(cells.style);
                const std::string_view text(lines_.text.data() + start, cells.end - start);
                if (spans_.size() > lineStart && *spans_.back().attributes == attributes) {
                    spans_.back().utf8 = {spans_.back().utf8.data(),
                                          spans_.back().utf8.size() + text.size()};
                } else {
                    spans_.push_back({text, &attributes});
                }
                start = cells.end;
            }
            lineEnds_.push_back(spans_.size());
        }
    }

    // A file uses few cell styles, each many times.
    const TextSpanAttributes& AttributesOf(cea608::CaptionMemory::CellStyle style) {
        for (const auto& [known, attributes] : styles_) {
            if (known == style) {
                return attributes;
            }
        }
        return styles_.emplace_back(style, style.Attributes()).second;
    }

    static constexpr std::size_t kStylesKept = 64;

    Output& out_;
    srt::SrtCueWriter writer_;
    const ParagraphStyleAttributes lineStyle_ = cea608::CaptionMemory::LineStyle();
    cea608::CaptionMemory::Lines lines_;
    // A deque, so that adding a style keeps the spans' pointers to the others.
    std::deque<std::pair<cea608::CaptionMemory::CellStyle, TextSpanAttributes>> styles_;
    std::vector<srt::SrtCueWriter::Span> spans_;
    std::vector<std::size_t> lineEnds_;
    std::size_t captions_ = 0;
    zelmediatypes::TickTime previousBegin_;
    bool outOfOrder_ = false;
};

std::optional<Conversion> SccToSrt(std::string_view bytes, const ReadOptions& readOptions,
                                   const WriteOptions& writeOptions,
                                   const std::function<void(std::string_view)>& pieces) {
    Conversion conversion;
    DiagnosticLog readLog(readOptions.fileName);
    LossReport losses;
    // SubRip output is about half as long as its SCC input.
    Output out(bytes.size() / 2 + 64, pieces);
    SccToSrtSink sink(out, losses);
    scc::ReadSccCaptions(bytes, readLog, sink);
    if (sink.OutOfOrder()) {
        return std::nullopt;
    }
    conversion.captionCount = sink.Captions();
    Finish(conversion, kStreamFormat_CEA608, readLog, losses, out, writeOptions);
    return conversion;
}

} // namespace

std::optional<Conversion> ConvertDirectly(CaptionFileFormat from, CaptionFileFormat to,
                                          std::string_view bytes, const ReadOptions& readOptions,
                                          const WriteOptions& writeOptions,
                                          const std::function<void(std::string_view)>& pieces) {
    if (from == CaptionFileFormat::kSrt && to == CaptionFileFormat::kWebVtt) {
        return SrtToWebVtt(bytes, readOptions, writeOptions, pieces);
    }
    if (from == CaptionFileFormat::kScc && to == CaptionFileFormat::kSrt) {
        return SccToSrt(bytes, readOptions, writeOptions, pieces);
    }
    return std::nullopt;
}

} // namespace captionformats
