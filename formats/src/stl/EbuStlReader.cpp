#include "captionformats/EbuStlReader.h"

#include "common/CaptionTextBuilder.h"
#include "stl/StlLayout.h"
#include "stl/StlTextField.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace captionformats {

using namespace zelcaptioning;
using namespace stl;
using zelmediatypes::TickTime;

namespace {

std::string_view Field(std::string_view gsi, std::size_t offset, std::size_t size) {
    return gsi.substr(offset, size);
}

std::int64_t TimecodeFrames(const std::uint8_t* bytes, int framesPerSecond) {
    return ((bytes[0] * 60LL + bytes[1]) * 60 + bytes[2]) * framesPerSecond + bytes[3];
}

bool IsValidTimecode(const std::uint8_t* bytes, int framesPerSecond) {
    return bytes[0] < 24 && bytes[1] < 60 && bytes[2] < 60 && bytes[3] < framesPerSecond;
}

// A subtitle's blocks gathered: the first block's header and the joined text.
struct Subtitle {
    std::uint64_t offset = 0;
    std::array<std::uint8_t, kTextFieldOffset> header{};
    std::string text;
};

class StlParse {
public:
    StlParse(std::string_view bytes, DiagnosticLog& log)
        : bytes_(bytes)
        , log_(log) {}

    std::vector<CaptionPtr> Run() {
        if (bytes_.size() < kGsiSize) {
            log_.Fail(SourceLocation::AtByte(0),
                      "not an EBU STL file: shorter than the 1024-byte GSI block");
            return {};
        }
        if (!ReadGsi()) {
            return {};
        }
        std::optional<Subtitle> current;
        for (std::size_t offset = kGsiSize; offset < bytes_.size(); offset += kTtiSize) {
            if (offset + kTtiSize > bytes_.size()) {
                log_.Warn(SourceLocation::AtByte(offset),
                          "incomplete TTI block at the end ignored");
                break;
            }
            const auto* block = reinterpret_cast<const std::uint8_t*>(bytes_.data() + offset);
            const std::uint8_t extension = block[3];
            if (extension == kUserDataBlock) {
                log_.Warn(SourceLocation::AtByte(offset), "user data TTI block skipped");
                continue;
            }
            if (block[15] != 0) {
                continue; // a comment, not a subtitle
            }
            if (!current) {
                current.emplace();
                current->offset = offset;
                std::copy(block, block + kTextFieldOffset, current->header.begin());
            } else if (current->header[1] != block[1] || current->header[2] != block[2]) {
                log_.Warn(SourceLocation::AtByte(offset),
                          "extension blocks of a subtitle end without a last block (EBN FFh)");
                AddSubtitle(*current);
                current.emplace();
                current->offset = offset;
                std::copy(block, block + kTextFieldOffset, current->header.begin());
            }
            current->text.append(bytes_.substr(offset + kTextFieldOffset, kTextFieldSize));
            if (extension == kLastExtensionBlock) {
                AddSubtitle(*current);
                current.reset();
            }
        }
        if (current) {
            log_.Warn(SourceLocation::AtByte(current->offset),
                      "the last subtitle lacks its last block (EBN FFh)");
            AddSubtitle(*current);
        }
        return std::move(captions_);
    }

private:
    bool ReadGsi() {
        const std::string_view gsi = bytes_.substr(0, kGsiSize);
        const std::string_view formatCode = Field(gsi, 3, 8);
        if (formatCode == "STL25.01") {
            framesPerSecond_ = 25;
        } else if (formatCode == "STL30.01") {
            framesPerSecond_ = 30;
        } else {
            log_.Fail(SourceLocation::AtByte(3), "not an EBU STL file: disk format code \"" +
                                                     std::string(formatCode) +
                                                     "\" is neither STL25.01 nor STL30.01");
            return false;
        }
        const std::string_view codeTable = Field(gsi, 12, 2);
        if (codeTable != "00") {
            log_.Warn(SourceLocation::AtByte(12),
                      "character code table \"" + std::string(codeTable) +
                          "\" is not 00 (Latin); text decoded as Latin");
        }
        const std::string_view display = Field(gsi, 11, 1);
        teletext_ = display == "1" || display == "2";
        const std::string_view maxRows = Field(gsi, 253, 2);
        rows_ =
            teletext_ ? kTeletextRows : std::clamp(std::atoi(std::string(maxRows).c_str()), 1, 99);
        if (Field(gsi, 255, 1) == "0") {
            log_.Warn(SourceLocation::AtByte(255),
                      "time code status 0: the time codes are not meant for use");
        }
        const std::string_view startOfProgramme = Field(gsi, 256, 8);
        if (startOfProgramme != "00000000" &&
            startOfProgramme.find_first_not_of(' ') != std::string_view::npos) {
            log_.Warn(SourceLocation::AtByte(256), "start of programme is " +
                                                       std::string(startOfProgramme) +
                                                       "; times are kept as written");
        }
        return true;
    }

    void AddSubtitle(const Subtitle& subtitle) {
        const std::uint8_t* header = subtitle.header.data();
        const std::uint8_t* in = header + 5;
        const std::uint8_t* out = header + 9;
        if (!IsValidTimecode(in, framesPerSecond_) || !IsValidTimecode(out, framesPerSecond_)) {
            log_.Warn(SourceLocation::AtByte(subtitle.offset + 5),
                      "subtitle skipped: time code out of range");
            return;
        }
        const TickTime begin = FrameTime(TimecodeFrames(in, framesPerSecond_));
        const TickTime end = FrameTime(TimecodeFrames(out, framesPerSecond_));
        if (!captions_.empty() && begin < captions_.back()->GetEndTime() && header[4] == 0) {
            log_.Warn(SourceLocation::AtByte(subtitle.offset + 5),
                      "subtitle overlaps the one before; kept as written");
        }
        const StlText text =
            DecodeTextField(subtitle.text, log_, subtitle.offset + kTextFieldOffset);
        captions_.push_back(MakeCaption(begin, end, kCaptionType_Subtitle,
                                        Paragraphs(text, header[13], header[14])));
    }

    zelmediatypes::TickTime FrameTime(std::int64_t frames) const {
        return TickTime(zelmediatypes::kTicksPerSecond / framesPerSecond_) * frames;
    }

    std::vector<CaptionTextParagraphPtr> Paragraphs(const StlText& text, int verticalPosition,
                                                    int justification) {
        std::vector<CaptionTextParagraphPtr> paragraphs;
        const int rowStep = text.doubleHeight ? 2 : 1;
        int row = std::clamp(verticalPosition, 1, rows_);
        for (const StlLine& line : text.lines) {
            CaptionTextBuilder builder;
            for (const StlRun& run : line.runs) {
                builder.Append(run.utf8, run.attributes);
            }
            ParagraphStyleAttributes style;
            style.SetAnchorID(kAnchorID_Free);
            CaptionTextParagraphPtr paragraph = builder.TakeParagraphs(style).front();
            const int length = static_cast<int>(paragraph->GetParagraphTextLength());
            int column = line.leadingCells;
            TextAlignmentType alignment = kTextAlignment_Left;
            if (justification == kJustifyLeft) {
                column = 0;
            } else if (justification == kJustifyCentre) {
                alignment = kTextAlignment_Center;
                column = (kTeletextColumns - length) / 2;
            } else if (justification == kJustifyRight) {
                alignment = kTextAlignment_Right;
                column = kTeletextColumns - length;
            }
            style.SetTextAlignment(alignment);
            paragraph->SetParagraphStyleAttributes(style);
            paragraph->SetCaptionPosition(
                Position(Rational(std::clamp(column, 0, kTeletextColumns - 1), kTeletextColumns),
                         Rational(std::min(row, rows_) - 1, rows_)));
            paragraphs.push_back(paragraph);
            row += rowStep;
        }
        return paragraphs;
    }

    std::string_view bytes_;
    DiagnosticLog& log_;
    int framesPerSecond_ = 25;
    bool teletext_ = true;
    int rows_ = kTeletextRows;
    std::vector<CaptionPtr> captions_;
};

} // namespace

ReadResult EbuStlReader::Read(std::string_view bytes, const ReadOptions& options) const {
    DiagnosticLog log(options.fileName);
    ReadResult result;
    result.streamFormat = kStreamFormat_Teletext;
    result.captions = StlParse(bytes, log).Run();
    log.TakeInto(result);
    return result;
}

} // namespace captionformats
