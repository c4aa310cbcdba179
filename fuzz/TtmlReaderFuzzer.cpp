// Any bytes through the TTML reader (pugixml underneath), then its writer and
// reader again.
#include "ReaderFuzzing.h"

#include "captionformats/TtmlReader.h"
#include "captionformats/TtmlWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::TtmlReader(), captionformats::TtmlWriter(), data, size);
    return 0;
}
