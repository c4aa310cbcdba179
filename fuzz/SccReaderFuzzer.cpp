// Any bytes through the SCC reader and its CEA-608 decoder, then the writer and
// the reader again. Roll-up and paint-on captions may merge or split on the way
// back (the writer reports it), so only their well-formedness is checked. The
// same bytes converted directly to SubRip must give what the model path gives.
#include "ConversionFuzzing.h"

#include "captionformats/SccReader.h"
#include "captionformats/SccWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::SccReader(), captionformats::SccWriter(), data, size,
                        fuzzing::CaptionCount::kMayChange);
    fuzzing::CheckDirectConversion(captionformats::CaptionFileFormat::kScc,
                                   captionformats::CaptionFileFormat::kSrt, data, size);
    return 0;
}
