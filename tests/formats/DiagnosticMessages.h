#pragma once

#include "captionformats/Diagnostic.h"

#include <string>
#include <vector>

namespace format_test {

// The diagnostics as their one-line texts ("file:line:col: ..."), so tests
// compare what a person would read.
inline std::vector<std::string>
Messages(const std::vector<captionformats::Diagnostic>& diagnostics) {
    std::vector<std::string> messages;
    for (const captionformats::Diagnostic& diagnostic : diagnostics) {
        messages.push_back(captionformats::ToString(diagnostic));
    }
    return messages;
}

} // namespace format_test
