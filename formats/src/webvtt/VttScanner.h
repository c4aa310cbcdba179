#pragma once

#include <cstddef>
#include <string_view>

namespace captionformats::webvtt {

// A position in one line of a WebVTT file, with the algorithm's "collect" steps.
class VttScanner {
public:
    explicit VttScanner(std::string_view text)
        : text_(text) {}

    bool AtEnd() const { return position_ >= text_.size(); }
    char Peek() const { return AtEnd() ? '\0' : text_[position_]; }
    void Advance() { ++position_; }
    std::size_t Offset() const { return position_; }
    std::string_view Rest() const { return text_.substr(position_); }

    std::string_view CollectDigits();
    void SkipWhitespace();

private:
    std::string_view text_;
    std::size_t position_ = 0;
};

// Tab, line feed, form feed, carriage return and space.
bool IsVttWhitespace(char c);
bool IsAsciiDigit(char c);

} // namespace captionformats::webvtt
