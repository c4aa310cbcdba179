#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

namespace captionformats {

// Where in a file something was found. Text formats give a 1-based line and a
// 1-based column counted in bytes of the line's UTF-8 text (0: the line as a
// whole, or no line at all); binary formats give the byte offset instead.
struct SourceLocation {
    std::uint64_t line = 0;
    std::uint64_t column = 0;
    std::optional<std::uint64_t> byteOffset;

    static SourceLocation AtLine(std::uint64_t line, std::uint64_t column = 0) {
        return {line, column, std::nullopt};
    }
    static SourceLocation AtByte(std::uint64_t offset) { return {0, 0, offset}; }

    friend bool operator==(const SourceLocation&, const SourceLocation&) = default;
};

// One finding of a reader or writer, located in the file it concerns.
struct Diagnostic {
    std::string fileName;
    SourceLocation location;
    std::string message;
};

// "file:line:column: message", "file:line: message", "file: byte N: message" or
// "file: message", the way compilers print findings.
std::string ToString(const Diagnostic& diagnostic);
std::ostream& operator<<(std::ostream& os, const Diagnostic& diagnostic);

} // namespace captionformats
