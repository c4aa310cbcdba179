#include "captionformats/EbuStlWriter.h"

#include "common/CaptionOrder.h"
#include "common/LossReport.h"
#include "stl/StlLayout.h"
#include "stl/StlTextEncoder.h"

#include <algorithm>
#include <cstdio>

namespace captionformats {

using namespace zelcaptioning;
using namespace stl;
using zelmediatypes::TickTime;

namespace {

constexpr std::size_t kMaxBlocksPerSubtitle = 0xF0; // extension numbers 00h-EFh, then FFh

void PutText(std::string& block, std::size_t offset, std::size_t size, const std::string& text) {
    block.replace(offset, std::min(size, text.size()), text.substr(0, size));
}

std::string Digits(std::int64_t value, int width) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*lld", width, static_cast<long long>(value));
    return text;
}

struct Frames {
    std::int64_t in = 0;
    std::int64_t out = 0;
};

class StlBuilder {
public:
    StlBuilder(LossReport& losses, int framesPerSecond)
        : losses_(losses)
        , framesPerSecond_(framesPerSecond)
        , frame_(zelmediatypes::kTicksPerSecond / framesPerSecond)
        , maxFrame_(24LL * 3600 * framesPerSecond - 1) {}

    void Add(const Caption& caption, std::size_t index) {
        index_ = index;
        begin_ = caption.GetBeginTime();
        if (caption.GetCaptionType() != kCaptionType_Subtitle &&
            caption.GetCaptionType() != kCaptionType_None) {
            Lose("caption type dropped (written as a teletext subtitle)");
        }
        const Frames frames{FrameOf(caption.GetBeginTime()), FrameOf(caption.GetEndTime())};
        if (index == 0) {
            firstFrame_ = frames.in;
        }
        std::vector<CaptionTextParagraphPtr> lines;
        for (std::uint64_t p = 0; p < caption.GetNumParagraphs(); ++p) {
            if (caption.GetCaptionTextParagraph(p)->GetParagraphTextLength() > 0) {
                lines.push_back(caption.GetCaptionTextParagraph(p));
            }
        }
        bool doubleHeight = true;
        const int verticalPosition = Rows(lines, doubleHeight);
        std::string text;
        for (std::size_t l = 0; l < lines.size(); ++l) {
            if (l > 0) {
                text += '\x8A';
            }
            if (doubleHeight) {
                text += '\x0D';
            }
            text += "\x0B\x0B" + EncodeLine(*lines[l], losses_, index_, begin_) + "\x0A\x0A";
        }
        const std::uint8_t justification = Justification(lines);
        AddBlocks(text, frames, verticalPosition, justification);
        ++subtitles_;
    }

    std::string Bytes() const {
        std::string gsi(kGsiSize, ' ');
        PutText(gsi, 0, 3, "850");
        PutText(gsi, 3, 8, framesPerSecond_ == 30 ? "STL30.01" : "STL25.01");
        PutText(gsi, 11, 1, "1");
        PutText(gsi, 12, 2, "00");
        PutText(gsi, 14, 2, "00");
        PutText(gsi, 224, 6, "000101");
        PutText(gsi, 230, 6, "000101");
        PutText(gsi, 236, 2, "00");
        PutText(gsi, 238, 5, Digits(static_cast<std::int64_t>(blocks_.size() / kTtiSize), 5));
        PutText(gsi, 243, 5, Digits(subtitles_, 5));
        PutText(gsi, 248, 3, "001");
        PutText(gsi, 251, 2, Digits(kTeletextColumns, 2));
        PutText(gsi, 253, 2, Digits(kTeletextRows, 2));
        PutText(gsi, 255, 1, "1");
        PutText(gsi, 256, 8, "00000000");
        PutText(gsi, 264, 8, TimecodeText(firstFrame_));
        PutText(gsi, 272, 1, "1");
        PutText(gsi, 273, 1, "1");
        return gsi + blocks_;
    }

private:
    void Lose(std::string_view what) { losses_.Note(what, index_, begin_); }

    std::int64_t FrameOf(TickTime time) {
        const std::int64_t frame = std::max<std::int64_t>(time.GetTicks(), 0) / frame_.GetTicks();
        if (frame_ * frame != time) {
            Lose("times rounded down to frames");
        }
        if (frame > maxFrame_) {
            Lose("times past the last frame of the day written as that frame");
        }
        return std::min(frame, maxFrame_);
    }

    std::string TimecodeText(std::int64_t frame) const {
        const std::int64_t seconds = frame / framesPerSecond_;
        return Digits(seconds / 3600, 2) + Digits(seconds / 60 % 60, 2) + Digits(seconds % 60, 2) +
               Digits(frame % framesPerSecond_, 2);
    }

    // The row of the first line; `doubleHeight` when lines stand two rows apart.
    int Rows(const std::vector<CaptionTextParagraphPtr>& lines, bool& doubleHeight) {
        std::vector<int> rows;
        for (std::size_t l = 0; l < lines.size(); ++l) {
            const Position position = lines[l]->GetCaptionPosition();
            if (position != kPosition_Uninitialized) {
                rows.push_back(
                    static_cast<int>(ValueWithScale(position.GetY(), kTeletextRows, true)) + 1);
            } else if (!rows.empty()) {
                rows.push_back(rows.back() + 2);
            } else {
                // Unplaced lines stand in double height at the bottom of the page.
                const AnchorID anchor = lines[l]->GetParagraphStyleAttributes().GetAnchorID();
                if (anchor < 6 || anchor > 8) {
                    Lose("unplaced lines written at the bottom of the page");
                }
                rows.push_back(kTeletextRows - 2 * static_cast<int>(lines.size() - 1) - 1);
            }
        }
        if (rows.size() < 2) {
            doubleHeight = true;
        } else {
            const int step = rows[1] - rows[0];
            doubleHeight = step != 1;
            for (std::size_t l = 1; l < rows.size(); ++l) {
                if (rows[l] - rows[l - 1] != (doubleHeight ? 2 : 1)) {
                    Lose("line rows evened out (one or two rows apart)");
                    break;
                }
            }
        }
        return std::clamp(rows.empty() ? kTeletextRows - 1 : rows.front(), 1, kTeletextRows);
    }

    std::uint8_t Justification(const std::vector<CaptionTextParagraphPtr>& lines) {
        if (lines.empty()) {
            return kJustifyCentre;
        }
        const TextAlignmentType alignment =
            lines.front()->GetParagraphStyleAttributes().GetTextAlignment();
        for (const auto& line : lines) {
            if (line->GetParagraphStyleAttributes().GetTextAlignment() != alignment) {
                Lose("per-line alignment dropped (the first line's is used)");
                break;
            }
        }
        for (const auto& line : lines) {
            const Position position = line->GetCaptionPosition();
            const int width = static_cast<int>(line->GetParagraphTextLength());
            const int column = alignment == kTextAlignment_Left     ? 0
                               : alignment == kTextAlignment_Center ? (kTeletextColumns - width) / 2
                                                                    : kTeletextColumns - width;
            if (position != kPosition_Uninitialized &&
                position.GetX() !=
                    Rational(std::clamp(column, 0, kTeletextColumns - 1), kTeletextColumns)) {
                Lose("horizontal positions replaced by the justification");
                break;
            }
        }
        return alignment == kTextAlignment_Left    ? kJustifyLeft
               : alignment == kTextAlignment_Right ? kJustifyRight
                                                   : kJustifyCentre;
    }

    void AddBlocks(const std::string& text, const Frames& frames, int verticalPosition,
                   std::uint8_t justification) {
        std::size_t count =
            std::max<std::size_t>(1, (text.size() + kTextFieldSize - 1) / kTextFieldSize);
        if (count > kMaxBlocksPerSubtitle) {
            Lose("text past 240 TTI blocks dropped");
            count = kMaxBlocksPerSubtitle;
        }
        for (std::size_t b = 0; b < count; ++b) {
            std::string block(kTtiSize, '\0');
            block[1] = static_cast<char>(subtitles_ & 0xFF);
            block[2] = static_cast<char>((subtitles_ >> 8) & 0xFF);
            block[3] = static_cast<char>(b + 1 == count ? kLastExtensionBlock : b);
            for (const auto& [offset, frame] :
                 {std::pair{5, frames.in}, std::pair{9, frames.out}}) {
                const std::int64_t seconds = frame / framesPerSecond_;
                block[static_cast<std::size_t>(offset)] = static_cast<char>(seconds / 3600);
                block[static_cast<std::size_t>(offset) + 1] = static_cast<char>(seconds / 60 % 60);
                block[static_cast<std::size_t>(offset) + 2] = static_cast<char>(seconds % 60);
                block[static_cast<std::size_t>(offset) + 3] =
                    static_cast<char>(frame % framesPerSecond_);
            }
            block[13] = static_cast<char>(verticalPosition);
            block[14] = static_cast<char>(justification);
            std::string field = b * kTextFieldSize < text.size()
                                    ? text.substr(b * kTextFieldSize, kTextFieldSize)
                                    : "";
            field.resize(kTextFieldSize, '\x8F');
            block.replace(kTextFieldOffset, kTextFieldSize, field);
            blocks_ += block;
        }
    }

    LossReport& losses_;
    int framesPerSecond_;
    TickTime frame_;
    std::int64_t maxFrame_;
    std::string blocks_;
    std::int64_t subtitles_ = 0;
    std::int64_t firstFrame_ = 0;
    std::size_t index_ = 0;
    TickTime begin_;
};

} // namespace

WriteResult EbuStlWriter::Write(const std::vector<CaptionPtr>& captions,
                                const WriteOptions& options) const {
    DiagnosticLog log(options.fileName);
    WriteResult result;
    if (options.framesPerSecond != 25 && options.framesPerSecond != 30) {
        log.Fail({}, "EBU STL runs at 25 or 30 frames per second, not " +
                         std::to_string(options.framesPerSecond));
        log.TakeInto(result);
        return result;
    }
    LossReport losses;
    StlBuilder builder(losses, options.framesPerSecond);
    const auto sorted = SortedByBegin(captions);
    for (std::size_t index = 0; index < sorted.size(); ++index) {
        builder.Add(*sorted[index], index);
    }
    result.bytes = builder.Bytes();
    losses.ReportInto(log);
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
