#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace platform::core {

// Where a text stops being JSON: the byte offset just past the character at
// which it went wrong (the text's end when it ended too early), and why.
struct JsonSyntaxError {
    std::size_t offset;
    std::string problem;
};

// Containers nest at most this deep: deep enough for any project file,
// shallow enough for a recursive reader's stack.
inline constexpr std::size_t kMaxJsonDepth = 512;

// The first place at which the text is not JSON (RFC 8259, UTF-8) as the
// project reader takes it, or nothing. Besides the grammar this refuses
// nesting deeper than kMaxJsonDepth and whole numbers, written without a
// fraction or an exponent, beyond 64 bits. A byte-by-byte scan: the reader
// runs it only on a text its fast parser refused, to say where and why.
std::optional<JsonSyntaxError> FindJsonSyntaxError(std::string_view text);

// Rewrites in place each \u escape of a UTF-16 surrogate that is not half of
// a pair to \ufffd, which has the same length, so offsets into the text stay
// true; says whether it rewrote any. The text must be free of syntax errors.
bool ReplaceLoneSurrogateEscapes(std::string& text);

} // namespace platform::core
