#pragma once

#include "captionformats/Diagnostic.h"

#include <string>
#include <vector>

namespace captionformats {

// Collects a reader's or writer's findings for one file. Warnings stop being
// recorded after kMaxWarnings, so a hostile file cannot grow the list without
// bound; the count of the ones left out is reported as a last warning.
class DiagnosticLog {
public:
    static constexpr std::size_t kMaxWarnings = 1000;

    explicit DiagnosticLog(std::string fileName)
        : fileName_(std::move(fileName)) {}

    void Warn(const SourceLocation& where, std::string message);
    void Fail(const SourceLocation& where, std::string message);
    bool HasErrors() const { return !errors_.empty(); }

    // Moves the findings out, the count of unrecorded warnings included.
    void TakeInto(std::vector<Diagnostic>& warnings, std::vector<Diagnostic>& errors);

    template <typename Result> void TakeInto(Result& result) {
        TakeInto(result.warnings, result.errors);
    }

private:
    std::string fileName_;
    std::vector<Diagnostic> warnings_;
    std::vector<Diagnostic> errors_;
    std::size_t unrecordedWarnings_ = 0;
};

} // namespace captionformats
