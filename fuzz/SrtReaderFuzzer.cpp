// Any bytes through the SubRip reader, then its writer and reader again.
#include "ReaderFuzzing.h"

#include "captionformats/SrtReader.h"
#include "captionformats/SrtWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::SrtReader(), captionformats::SrtWriter(), data, size);
    return 0;
}
