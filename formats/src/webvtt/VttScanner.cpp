#include "webvtt/VttScanner.h"

namespace captionformats::webvtt {

bool IsVttWhitespace(char c) {
    return c == '\t' || c == '\n' || c == '\f' || c == '\r' || c == ' ';
}

bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view VttScanner::CollectDigits() {
    const std::size_t start = position_;
    while (!AtEnd() && IsAsciiDigit(Peek())) {
        ++position_;
    }
    return text_.substr(start, position_ - start);
}

void VttScanner::SkipWhitespace() {
    while (!AtEnd() && IsVttWhitespace(Peek())) {
        ++position_;
    }
}

} // namespace captionformats::webvtt
