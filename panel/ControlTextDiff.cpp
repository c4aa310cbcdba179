#include "ControlTextDiff.h"

#include <algorithm>

namespace HandlerCaptions {

zelcore::UTF16String ToEngineBreaks(std::u16string_view text) {
    zelcore::UTF16String out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r') {
            out.push_back(u'\n');
            if (i + 1 < text.size() && text[i + 1] == u'\n') {
                ++i;
            }
        } else {
            out.push_back(text[i]);
        }
    }
    return out;
}

std::optional<ControlTextChange> DiffControlText(const zelcore::UTF16String& before,
                                                 const zelcore::UTF16String& after) {
    const std::u16string_view a = zelcore::View(before);
    const std::u16string_view b = zelcore::View(after);
    if (a == b) {
        return std::nullopt;
    }
    std::size_t prefix = 0;
    const std::size_t shorter = std::min(a.size(), b.size());
    while (prefix < shorter && a[prefix] == b[prefix]) {
        ++prefix;
    }
    // A pair is changed whole: never stop between its CR and its LF.
    if (prefix > 0 && a[prefix - 1] == u'\r') {
        --prefix;
    }
    std::size_t suffix = 0;
    while (suffix < shorter - prefix && a[a.size() - 1 - suffix] == b[b.size() - 1 - suffix]) {
        ++suffix;
    }
    if (suffix > 0 && a[a.size() - suffix] == u'\n' && a.size() > suffix &&
        a[a.size() - suffix - 1] == u'\r' && a.size() - suffix - 1 >= prefix) {
        --suffix;
    }
    ControlTextChange change;
    change.position = ToEngineBreaks(a.substr(0, prefix)).size();
    change.removed = ToEngineBreaks(a.substr(prefix, a.size() - suffix - prefix));
    change.inserted = ToEngineBreaks(b.substr(prefix, b.size() - suffix - prefix));
    return change;
}

void ToControlRange(std::u16string_view controlText, std::int64_t& start, std::int64_t& end) {
    std::int64_t walk = start + 1;
    for (std::int64_t i = 0; i < walk && i + 1 < static_cast<std::int64_t>(controlText.size());
         ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (controlText[at] == u'\r' && controlText[at + 1] == u'\n') {
            ++walk;
            ++start;
            if (end >= 0) {
                ++end;
            }
        }
    }
}

std::int64_t EnginePositionOf(std::u16string_view controlText, std::int64_t controlOffset) {
    const std::size_t end = std::min(
        controlText.size(), static_cast<std::size_t>(std::max<std::int64_t>(0, controlOffset)));
    return static_cast<std::int64_t>(ToEngineBreaks(controlText.substr(0, end)).size());
}

} // namespace HandlerCaptions
