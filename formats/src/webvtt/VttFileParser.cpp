#include "captionformats/WebVttDocument.h"

#include "common/TextInput.h"
#include "webvtt/VttSettings.h"

namespace captionformats {

namespace {

using webvtt::IsVttWhitespace;

// The text after `keyword` holds nothing but whitespace.
bool IsBlockHeader(std::string_view buffer, std::string_view keyword) {
    if (!buffer.starts_with(keyword)) {
        return false;
    }
    for (char c : buffer.substr(keyword.size())) {
        if (!IsVttWhitespace(c)) {
            return false;
        }
    }
    return true;
}

// The block loop of the W3C WebVTT parser, on lines instead of a character
// position: the algorithm's "previous position" is a line index.
class VttFileParser {
public:
    VttFileParser(const std::vector<TextInput::Line>& lines, DiagnosticLog& log)
        : lines_(lines)
        , log_(log) {}

    VttDocument Run() {
        if (!HasSignature()) {
            log_.Fail(SourceLocation::AtLine(1, 1),
                      "not a WebVTT file: it must start with \"WEBVTT\" followed by a space, a "
                      "tab or the end of the line");
            return {};
        }
        next_ = 1;
        if (next_ < lines_.size() && !lines_[next_].text.empty()) {
            CollectBlock(true);
        }
        while (next_ < lines_.size()) {
            if (lines_[next_].text.empty()) {
                ++next_;
            } else {
                CollectBlock(false);
            }
        }
        return std::move(document_);
    }

private:
    bool HasSignature() const {
        if (lines_.empty()) {
            return false;
        }
        const std::string_view first = lines_.front().text;
        return first.starts_with("WEBVTT") &&
               (first.size() == 6 || first[6] == ' ' || first[6] == '\t');
    }

    enum class BlockKind { kNone, kStyle, kRegion };

    void CollectBlock(bool inHeader) {
        const std::uint64_t firstLine = lines_[next_].number;
        std::size_t lineCount = 0;
        std::size_t previous = next_;
        std::string buffer;
        bool seenArrow = false;
        std::optional<VttCue> cue;
        BlockKind kind = BlockKind::kNone;
        while (next_ < lines_.size()) {
            const TextInput::Line& line = lines_[next_++];
            ++lineCount;
            if (line.text.find("-->") != std::string_view::npos) {
                if (!inHeader && (lineCount == 1 || (lineCount == 2 && !seenArrow))) {
                    seenArrow = true;
                    previous = next_;
                    cue = StartCue(buffer, line);
                    if (cue) {
                        buffer.clear();
                        seenCue_ = true;
                    }
                } else {
                    next_ = previous;
                    break;
                }
            } else if (line.text.empty()) {
                break;
            } else {
                if (!inHeader && lineCount == 2 && !seenCue_) {
                    if (IsBlockHeader(buffer, "STYLE")) {
                        kind = BlockKind::kStyle;
                        buffer.clear();
                    } else if (IsBlockHeader(buffer, "REGION")) {
                        kind = BlockKind::kRegion;
                        buffer.clear();
                    }
                }
                if (!buffer.empty()) {
                    buffer += '\n';
                }
                buffer += line.text;
                previous = next_;
            }
        }
        if (cue) {
            cue->text = std::move(buffer);
            document_.cues.push_back(std::move(*cue));
        } else if (kind == BlockKind::kStyle) {
            document_.styleSheets.push_back(std::move(buffer));
        } else if (kind == BlockKind::kRegion) {
            AddRegion(buffer);
        } else if (!inHeader && !seenArrow && !IsNote(buffer)) {
            log_.Warn(SourceLocation::AtLine(firstLine, 1),
                      "block skipped: it has no cue timing line");
        }
    }

    static bool IsNote(std::string_view buffer) {
        return buffer.starts_with("NOTE") &&
               (buffer.size() == 4 || buffer[4] == ' ' || buffer[4] == '\t' || buffer[4] == '\n');
    }

    std::optional<VttCue> StartCue(const std::string& identifier, const TextInput::Line& line) {
        VttCue cue;
        cue.id = identifier;
        cue.timingLine = line.number;
        cue.textFirstLine = line.number + 1;
        const auto failure =
            webvtt::ParseTimingsAndSettings(line.text, cue, liveRegions_, {log_, line.number});
        if (failure) {
            log_.Warn(SourceLocation::AtLine(line.number, failure->column),
                      "cue skipped: " + failure->message);
            return std::nullopt;
        }
        return cue;
    }

    void AddRegion(std::string_view settings) {
        VttRegion region;
        webvtt::ParseRegionSettings(settings, region);
        document_.regions.push_back(region);
        liveRegions_[region.id] = document_.regions.size() - 1;
    }

    const std::vector<TextInput::Line>& lines_;
    DiagnosticLog& log_;
    VttDocument document_;
    webvtt::RegionIds liveRegions_;
    std::size_t next_ = 0;
    bool seenCue_ = false;
};

} // namespace

VttParseResult ParseWebVttDocument(std::string_view bytes, const ReadOptions& options) {
    DiagnosticLog log(options.fileName);
    const TextInput input(bytes, TextInput::Encoding::kUtf8);
    VttParseResult result;
    result.document = VttFileParser(input.Lines(), log).Run();
    log.TakeInto(result.warnings, result.errors);
    return result;
}

} // namespace captionformats
