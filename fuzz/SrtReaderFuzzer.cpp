// Any bytes through the SubRip reader, then its writer and reader again; and
// converted directly to WebVTT, which must give what the model path gives.
// The reader takes cues of the usual shape straight from the bytes and all
// others line by line: the same bytes spelled so that no cue has the usual
// shape must read alike.
#include "ConversionFuzzing.h"
#include "WithoutUsualShapes.h"

#include "captionformats/SrtReader.h"
#include "captionformats/SrtWriter.h"

namespace {

void CheckUsualCues(std::string_view bytes) {
    using namespace captionformats;
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
        return; // UTF-16: the lines are not the bytes'
    }
    const ReadResult read = SrtReader().Read(bytes, {"in"});
    const ReadResult other = SrtReader().Read(format_test::SrtWithoutUsualCues(bytes), {"in"});
    fuzzing::Require(fuzzing::SameFindings(read.warnings, other.warnings),
                     "usual cues: other read warnings");
    fuzzing::Require(fuzzing::SameFindings(read.errors, other.errors),
                     "usual cues: other read errors");
    const auto writer = MakeWriter(CaptionFileFormat::kWebVtt);
    fuzzing::Require(writer->Write(read.captions, {"out"}).bytes ==
                         writer->Write(other.captions, {"out"}).bytes,
                     "usual cues: other captions");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::SrtReader(), captionformats::SrtWriter(), data, size);
    fuzzing::CheckDirectConversion(captionformats::CaptionFileFormat::kSrt,
                                   captionformats::CaptionFileFormat::kWebVtt, data, size);
    CheckUsualCues(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
