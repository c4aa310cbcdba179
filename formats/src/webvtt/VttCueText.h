#pragma once

#include "common/CaptionTextBuilder.h"
#include "common/DiagnosticLog.h"

#include <string>
#include <string_view>
#include <vector>

namespace captionformats::webvtt {

// The W3C WebVTT cue text parsing rules, with the node tree folded into span
// attributes as it is built: b, i and u set their styles; the colour classes
// (white, lime, cyan, red, yellow, magenta, blue, black, and bg_ for the
// background) on any element set its colours; v and lang keep their text; ruby
// text is kept in parentheses after its base; timestamp tags are dropped.
// Dropped annotations are reported as warnings.
class VttCueText {
public:
    VttCueText(CaptionTextBuilder& builder, DiagnosticLog& log, std::uint64_t firstLineNumber)
        : builder_(builder)
        , log_(log)
        , firstLineNumber_(firstLineNumber) {}

    void Parse(std::string_view text);

private:
    // Deeper nesting is ignored, which keeps the work per character bounded.
    static constexpr std::size_t kMaxOpenElements = 64;

    struct Token {
        enum class Kind { kText, kStartTag, kEndTag, kTimestamp } kind = Kind::kText;
        std::string value; // the text, or the tag name or timestamp
        std::vector<std::string> classes;
        std::string annotation;
    };
    struct OpenElement {
        std::string name;
        std::vector<std::string> classes;
    };

    Token NextToken();
    void AddText(std::string_view text);
    void StartElement(Token token);
    void EndElement(const std::string& name);
    zelcaptioning::TextSpanAttributes CurrentAttributes() const;
    SourceLocation Here();

    CaptionTextBuilder& builder_;
    DiagnosticLog& log_;
    std::uint64_t firstLineNumber_;
    std::string_view text_;
    std::size_t position_ = 0;
    std::size_t tokenStart_ = 0;
    std::size_t scannedTo_ = 0;
    std::uint64_t scannedLines_ = 0;
    std::size_t lineStart_ = 0;
    bool reportedDepth_ = false;
    std::vector<OpenElement> open_;
};

} // namespace captionformats::webvtt
