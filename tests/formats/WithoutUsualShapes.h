#pragma once

#include <string>
#include <string_view>

namespace format_test {

// A SubRip file with a space after every line of digits alone: a cue number
// so spelled is still one, and a line of text ends the same once trimmed, but
// no cue of it has the usual shape (a line of digits, the usual timing line,
// text, a blank line) that the reader takes straight from the bytes. Both
// files must read alike.
inline std::string SrtWithoutUsualCues(std::string_view bytes) {
    std::string spelled;
    std::size_t lineStart = 0;
    for (std::size_t at = 0; at <= bytes.size(); ++at) {
        if (at == bytes.size() || bytes[at] == '\n' || bytes[at] == '\r') {
            const std::string_view line = bytes.substr(lineStart, at - lineStart);
            spelled += line;
            if (!line.empty() && line.find_first_not_of("0123456789") == std::string_view::npos) {
                spelled += ' ';
            }
            if (at < bytes.size()) {
                spelled += bytes[at];
            }
            lineStart = at + 1;
        }
    }
    return spelled;
}

// An SCC file with a space before every line break and at its end: no line
// then has the usual shape (a time code, then words of four hex digits one
// space or tab apart up to the line's end) that the reader takes as it cuts
// the line, and every line holds the same words. Both files must read alike.
inline std::string SccWithoutUsualLines(std::string_view bytes) {
    std::string spelled;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool secondOfCrLf = bytes[i] == '\n' && i > 0 && bytes[i - 1] == '\r';
        if ((bytes[i] == '\r' || bytes[i] == '\n') && !secondOfCrLf) {
            spelled += ' ';
        }
        spelled += bytes[i];
    }
    return spelled + ' ';
}

} // namespace format_test
