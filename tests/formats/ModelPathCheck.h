#pragma once

#include "captionformats/CaptionFileFormat.h"

#include <gtest/gtest.h>

#include <string_view>

namespace format_test {

// Whether a direct conversion of `bytes` is indistinguishable from reading
// them into captions and writing those: the same bytes, whole or handed on in
// pieces, the same warnings and errors, the same caption count and stream
// format. A failure says where the two differ.
::testing::AssertionResult SameAsModelPath(captionformats::CaptionFileFormat from,
                                           captionformats::CaptionFileFormat to,
                                           std::string_view bytes);

} // namespace format_test
