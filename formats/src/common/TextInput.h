#pragma once

#include "common/DiagnosticLog.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace captionformats {

// A text file decoded to UTF-8 and cut into lines. A UTF-8 byte order mark is
// dropped; with kUtf8OrUtf16, a UTF-16 one (either byte order) makes the rest
// decode as UTF-16. NUL becomes U+FFFD, as does any byte that is not part of
// valid UTF-8. Lines end at CR LF, a lone CR or a lone LF; the terminators are
// not kept.
class TextInput {
public:
    enum class Encoding { kUtf8, kUtf8OrUtf16 };

    struct Line {
        std::string_view text;
        std::uint64_t number = 0; // 1-based
    };

    TextInput(std::string_view bytes, Encoding encoding);
    TextInput(const TextInput&) = delete;
    TextInput& operator=(const TextInput&) = delete;

    // Valid UTF-8 input is not copied: the text and the lines then point into
    // the bytes given, which must outlive the TextInput.
    std::string_view Text() const { return text_; }
    const std::vector<Line>& Lines() const { return lines_; }

private:
    std::string decoded_; // the text when the bytes had to be decoded
    std::string_view text_;
    std::vector<Line> lines_;
};

// Appends `codePoint` to `utf8`; surrogates and values past U+10FFFF become U+FFFD.
void AppendUtf8(std::string& utf8, char32_t codePoint);

} // namespace captionformats
