#pragma once

#include "zelcaptioning/Caption.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace captionformats {

// Gathers a caption's text as it is parsed: runs of UTF-8 text with their
// attributes, line by line. Adjacent runs with equal attributes join into one
// span, so a reader's paragraphs come out packed. A builder kept from caption
// to caption keeps its storage.
class CaptionTextBuilder {
public:
    struct Run {
        std::string utf8; // never empty
        zelcaptioning::TextSpanAttributes attributes;
    };

    void Append(std::string_view utf8, const zelcaptioning::TextSpanAttributes& attributes);
    void BreakLine();
    bool IsEmpty() const;

    // The lines gathered so far, for a writer that takes them without the
    // caption model; Clear then makes the builder empty.
    std::size_t LineCount() const { return lineCount_; }
    std::span<const Run> LineRuns(std::size_t line) const {
        return {lines_[line].runs.data(), lines_[line].runCount};
    }
    void Clear();

    // The lines as paragraphs, each with `style` and unplaced; an empty line
    // becomes a paragraph without spans. Leaves the builder empty.
    std::vector<zelcaptioning::CaptionTextParagraphPtr>
    TakeParagraphs(const zelcaptioning::ParagraphStyleAttributes& style);

private:
    struct Line {
        std::vector<Run> runs; // the first runCount are in use
        std::size_t runCount = 0;
    };
    // The first lineCount_ lines are in use. Lines and runs past those keep
    // their storage, so a builder reused from caption to caption stops
    // allocating once it has seen its largest caption.
    std::vector<Line> lines_{1};
    std::size_t lineCount_ = 1;
};

zelcaptioning::CaptionPtr
MakeCaption(zelmediatypes::TickTime begin, zelmediatypes::TickTime end,
            zelcaptioning::CaptionType type,
            std::vector<zelcaptioning::CaptionTextParagraphPtr> paragraphs);

} // namespace captionformats
