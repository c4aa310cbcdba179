#pragma once

// The checks every caption reader's harness runs: reading any input gives well
// formed captions, and writing them in the same format gives a file the reader
// takes back without errors (and, where the format keeps captions apart, with
// as many captions).
#include "captionformats/CaptionReader.h"
#include "captionformats/CaptionWriter.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace fuzzing {

inline void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

inline void CheckWellFormed(const captionformats::ReadResult& result) {
    for (const zelcaptioning::CaptionPtr& caption : result.captions) {
        Require(caption != nullptr, "a caption is null");
        for (std::uint64_t p = 0; p < caption->GetNumParagraphs(); ++p) {
            const auto paragraph = caption->GetCaptionTextParagraph(p);
            Require(paragraph != nullptr, "a paragraph is null");
            for (std::uint64_t s = 0; s < paragraph->GetNumSpans(); ++s) {
                Require(paragraph->GetCaptionTextSpan(s) != nullptr, "a span is null");
            }
        }
    }
    for (const captionformats::Diagnostic& error : result.errors) {
        Require(!error.message.empty(), "an error without a message");
    }
}

enum class CaptionCount { kSurvivesWriting, kMayChange };

inline void FuzzReader(const captionformats::CaptionReader& reader,
                       const captionformats::CaptionWriter& writer, const std::uint8_t* data,
                       std::size_t size, CaptionCount count = CaptionCount::kSurvivesWriting) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const captionformats::ReadResult read = reader.Read(bytes, {"fuzz"});
    CheckWellFormed(read);
    const captionformats::WriteResult written = writer.Write(read.captions, {"fuzz"});
    Require(written.Succeeded(), "writing what was read failed");
    const captionformats::ReadResult reread = reader.Read(written.bytes, {"fuzz"});
    CheckWellFormed(reread);
    Require(reread.Succeeded() || read.captions.empty(), "what was written cannot be read");
    Require(count == CaptionCount::kMayChange || reread.captions.size() == read.captions.size(),
            "captions lost in a write and read");
}

} // namespace fuzzing
