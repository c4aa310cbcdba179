#pragma once

#include "common/DiagnosticLog.h"
#include "scc/Cea608Decoder.h"

#include <string_view>

namespace captionformats::scc {

// Reads an SCC file (see SccReader) through our CEA-608 decoder, which hands
// each caption to `sink` as it ends; findings go to `log`, and a file that is
// not SCC fails there before any caption.
void ReadSccCaptions(std::string_view bytes, DiagnosticLog& log, cea608::DecodedCaptionSink& sink);

} // namespace captionformats::scc
