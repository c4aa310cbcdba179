#pragma once

// The check the harnesses of readers with a direct conversion add: converting
// the input directly gives what reading it into captions and writing them
// gives, the same bytes, findings and caption count, whole and in pieces.
#include "ReaderFuzzing.h"

#include "captionformats/DirectConversion.h"

#include <string>
#include <vector>

namespace fuzzing {

inline bool SameFindings(const std::vector<captionformats::Diagnostic>& a,
                         const std::vector<captionformats::Diagnostic>& b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (captionformats::ToString(a[i]) != captionformats::ToString(b[i])) {
            return false;
        }
    }
    return true;
}

inline void CheckDirectConversion(captionformats::CaptionFileFormat from,
                                  captionformats::CaptionFileFormat to, const std::uint8_t* data,
                                  std::size_t size) {
    using namespace captionformats;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::optional<Conversion> direct = ConvertDirectly(from, to, bytes, {"in"}, {"out"});
    if (!direct) {
        return; // out of time order: the general path's
    }
    const ReadResult read = MakeReader(from)->Read(bytes, {"in"});
    WriteResult written;
    if (read.Succeeded()) {
        written = MakeWriter(to)->Write(read.captions, {"out"});
    }
    Require(direct->captionCount == read.captions.size(), "direct: another caption count");
    Require(SameFindings(direct->read.warnings, read.warnings), "direct: other read warnings");
    Require(SameFindings(direct->read.errors, read.errors), "direct: other read errors");
    Require(SameFindings(direct->written.warnings, written.warnings),
            "direct: other write warnings");
    Require(SameFindings(direct->written.errors, written.errors), "direct: other write errors");
    Require(direct->written.bytes == written.bytes, "direct: other bytes");
    std::string pieces;
    ConvertDirectly(from, to, bytes, {"in"}, {"out"},
                    [&pieces](std::string_view piece) { pieces += piece; });
    Require(!read.Succeeded() || pieces == written.bytes, "direct: other bytes in pieces");
}

} // namespace fuzzing
