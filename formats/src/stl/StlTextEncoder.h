#pragma once

#include "common/LossReport.h"

#include "zelcaptioning/CaptionTextParagraph.h"

#include <string>

namespace captionformats::stl {

// The text field bytes of one line: colour codes for text colour changes (in
// place of a space before the change where the text has one, else adding a
// space), 80h-83h for italics and underline, ISO 6937 characters ('?' for
// characters it lacks). Reports what it drops or adds.
std::string EncodeLine(const zelcaptioning::CaptionTextParagraph& line, LossReport& losses,
                       std::size_t captionIndex, zelmediatypes::TickTime begin);

} // namespace captionformats::stl
