// Any bytes through the SubRip reader, then its writer and reader again; and
// converted directly to WebVTT, which must give what the model path gives.
#include "ConversionFuzzing.h"

#include "captionformats/SrtReader.h"
#include "captionformats/SrtWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::SrtReader(), captionformats::SrtWriter(), data, size);
    fuzzing::CheckDirectConversion(captionformats::CaptionFileFormat::kSrt,
                                   captionformats::CaptionFileFormat::kWebVtt, data, size);
    return 0;
}
