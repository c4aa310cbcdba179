// Any bytes through the SCC reader and its CEA-608 decoder, then the writer and
// the reader again. Roll-up and paint-on captions may merge or split on the way
// back (the writer reports it), so only their well-formedness is checked. The
// same bytes converted directly to SubRip must give what the model path gives.
// Lines in the usual shape are read as they are cut, other lines once cut:
// with a space before every line break, which leaves no line in the usual
// shape, the bytes must read the same.
#include "ConversionFuzzing.h"
#include "WithoutUsualShapes.h"

#include "captionformats/SccReader.h"
#include "captionformats/SccWriter.h"
#include "captionformats/SrtWriter.h"

namespace {

void CheckUsualLines(const std::uint8_t* data, std::size_t size) {
    using namespace captionformats;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string respelled = format_test::SccWithoutUsualLines(bytes);
    const ReadResult usual = SccReader().Read(bytes, {"in"});
    const ReadResult other = SccReader().Read(respelled, {"in"});
    fuzzing::Require(usual.captions.size() == other.captions.size(),
                     "respelled: another caption count");
    fuzzing::Require(fuzzing::SameFindings(usual.warnings, other.warnings),
                     "respelled: other warnings");
    fuzzing::Require(fuzzing::SameFindings(usual.errors, other.errors), "respelled: other errors");
    fuzzing::Require(SrtWriter().Write(usual.captions, {"out"}).bytes ==
                         SrtWriter().Write(other.captions, {"out"}).bytes,
                     "respelled: other captions");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    CheckUsualLines(data, size);
    fuzzing::FuzzReader(captionformats::SccReader(), captionformats::SccWriter(), data, size,
                        fuzzing::CaptionCount::kMayChange);
    fuzzing::CheckDirectConversion(captionformats::CaptionFileFormat::kScc,
                                   captionformats::CaptionFileFormat::kSrt, data, size);
    return 0;
}
