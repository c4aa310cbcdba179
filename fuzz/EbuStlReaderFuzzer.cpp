// Any bytes through the EBU STL reader, then its writer and reader again.
#include "ReaderFuzzing.h"

#include "captionformats/EbuStlReader.h"
#include "captionformats/EbuStlWriter.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::FuzzReader(captionformats::EbuStlReader(), captionformats::EbuStlWriter(), data, size);
    return 0;
}
