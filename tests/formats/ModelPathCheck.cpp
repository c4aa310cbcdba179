#include "ModelPathCheck.h"

#include "captionformats/DirectConversion.h"

#include "DiagnosticMessages.h"

#include <algorithm>

namespace format_test {

using namespace captionformats;

::testing::AssertionResult SameAsModelPath(CaptionFileFormat from, CaptionFileFormat to,
                                           std::string_view bytes) {
    const ReadOptions readOptions{"in"};
    const WriteOptions writeOptions{"out"};
    const std::optional<Conversion> direct =
        ConvertDirectly(from, to, bytes, readOptions, writeOptions);
    if (!direct) {
        return ::testing::AssertionFailure() << "no direct conversion";
    }
    const ReadResult read = MakeReader(from)->Read(bytes, readOptions);
    WriteResult written;
    if (read.Succeeded()) {
        written = MakeWriter(to)->Write(read.captions, writeOptions);
    }
    if (direct->captionCount != read.captions.size()) {
        return ::testing::AssertionFailure()
               << direct->captionCount << " captions, the model path " << read.captions.size();
    }
    if (direct->read.streamFormat != read.streamFormat) {
        return ::testing::AssertionFailure() << "stream formats differ";
    }
    const std::pair<const char*, std::pair<std::vector<std::string>, std::vector<std::string>>>
        findings[] = {
            {"read warnings", {Messages(direct->read.warnings), Messages(read.warnings)}},
            {"read errors", {Messages(direct->read.errors), Messages(read.errors)}},
            {"write warnings", {Messages(direct->written.warnings), Messages(written.warnings)}},
            {"write errors", {Messages(direct->written.errors), Messages(written.errors)}},
        };
    for (const auto& [kind, lists] : findings) {
        if (lists.first != lists.second) {
            auto failure = ::testing::AssertionFailure() << kind << " differ; direct:";
            for (const std::string& message : lists.first) {
                failure << "\n  " << message;
            }
            failure << "\nmodel path:";
            for (const std::string& message : lists.second) {
                failure << "\n  " << message;
            }
            return failure;
        }
    }
    // Handed on in pieces, the bytes are the same, and none are kept.
    std::string pieces;
    const std::optional<Conversion> inPieces =
        ConvertDirectly(from, to, bytes, readOptions, writeOptions,
                        [&pieces](std::string_view piece) { pieces.append(piece); });
    if (!inPieces || !inPieces->written.bytes.empty() ||
        (read.Succeeded() && pieces != direct->written.bytes)) {
        return ::testing::AssertionFailure() << "the bytes handed on in pieces differ";
    }
    if (direct->written.bytes != written.bytes) {
        const auto& a = direct->written.bytes;
        const auto& b = written.bytes;
        const auto differ = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
        const auto at = static_cast<std::size_t>(differ.first - a.begin());
        return ::testing::AssertionFailure()
               << "bytes differ at " << at << ": direct \"" << a.substr(at, 60)
               << "\", model path \"" << b.substr(at, 60) << "\"";
    }
    return ::testing::AssertionSuccess();
}

} // namespace format_test
