#pragma once

// FFmpeg's CEA-608 decoder (libavcodec), an oracle for the text of SCC files.
#include <string>
#include <vector>

namespace test {

// The captions FFmpeg's EIA-608 decoder shows for an SCC file's byte pairs
// (field 1, each pair at its frame), in order, each as its lines with the ASS
// override tags removed.
std::vector<std::vector<std::string>> DecodeSccWithFfmpeg(const std::string& sccText);

} // namespace test
