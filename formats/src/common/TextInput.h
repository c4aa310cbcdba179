#pragma once

#include "common/DiagnosticLog.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace captionformats {

enum class TextEncoding { kUtf8, kUtf8OrUtf16 };

// A text file decoded to UTF-8. A UTF-8 byte order mark is dropped; with
// kUtf8OrUtf16, a UTF-16 one (either byte order) makes the rest decode as
// UTF-16. NUL becomes U+FFFD, as does any byte that is not part of valid UTF-8.
class DecodedText {
public:
    DecodedText(std::string_view bytes, TextEncoding encoding);
    DecodedText(const DecodedText&) = delete;
    DecodedText& operator=(const DecodedText&) = delete;

    // Valid UTF-8 input is not copied: the text then points into the bytes
    // given, which must outlive the DecodedText.
    std::string_view Text() const { return text_; }

private:
    std::string decoded_; // the text when the bytes had to be decoded
    std::string_view text_;
};

// Whether the text holds nothing but spaces and tabs.
inline bool IsBlank(std::string_view text) {
    return text.find_first_not_of(" \t") == std::string_view::npos;
}

struct TextLine {
    std::string_view text;
    std::uint64_t number = 0; // 1-based
};

// Cuts a text into lines one at a time, without holding them all: lines end at
// CR LF, a lone CR or a lone LF; the terminators are not kept, and a text's
// last terminator starts no further line.
class LineCursor {
public:
    explicit LineCursor(std::string_view text)
        : text_(text) {}
    // Starts at byte `start` of the text, the start of line `number`.
    LineCursor(std::string_view text, std::size_t start, std::uint64_t number)
        : text_(text)
        , start_(start)
        , number_(number) {}

    // The next line into `line`; false at the end of the text.
    bool Next(TextLine& line);
    // Where the next line starts: the size of the text at its end.
    std::size_t Offset() const { return start_; }

private:
    std::string_view text_;
    std::size_t start_ = 0;
    std::uint64_t number_ = 1;
};

// A decoded text cut into lines (see DecodedText and LineCursor).
class TextInput : public DecodedText {
public:
    using Encoding = TextEncoding;
    using Line = TextLine;

    TextInput(std::string_view bytes, Encoding encoding);

    // The lines point into Text().
    const std::vector<Line>& Lines() const { return lines_; }

private:
    std::vector<Line> lines_;
};

// Appends `codePoint` to `utf8`; surrogates and values past U+10FFFF become U+FFFD.
void AppendUtf8(std::string& utf8, char32_t codePoint);

} // namespace captionformats
