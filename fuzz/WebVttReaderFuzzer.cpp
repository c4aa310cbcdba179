// Any bytes through the WebVTT reader, then its writer and reader again.
#include "ReaderFuzzing.h"

#include "captionformats/WebVttReader.h"
#include "captionformats/WebVttWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::WebVttReader(), captionformats::WebVttWriter(), data, size);
    return 0;
}
