#pragma once

#include "common/DiagnosticLog.h"

#include "zelcaptioning/TextSpanAttributes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace captionformats::stl {

struct StlRun {
    std::string utf8;
    zelcaptioning::TextSpanAttributes attributes;
};

struct StlLine {
    std::vector<StlRun> runs;
    int leadingCells = 0; // cells before the first character (spaces and control codes)
};

// A decoded text field (all TTI blocks of one subtitle joined).
struct StlText {
    std::vector<StlLine> lines; // lines without text are left out
    bool doubleHeight = false;
};

// Decodes a text field of code table 00 (ISO 6937). Teletext colour codes
// 00h-07h set the text colour from the next cell on, 1Dh sets the background
// to the text colour and 1Ch clears it; 80h-83h turn italics and underline on
// and off. A run of teletext control codes between characters shows as one
// space (each takes a cell); at a line's ends they show as nothing. 8Ah breaks
// the line, 8Fh is unused space. Codes we do not map (flash, double width,
// mosaics) are reported once per field at `fieldOffset`.
StlText DecodeTextField(std::string_view field, DiagnosticLog& log, std::uint64_t fieldOffset);

} // namespace captionformats::stl
