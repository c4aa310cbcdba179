#include "common/DiagnosticLog.h"

namespace captionformats {

void DiagnosticLog::Warn(const SourceLocation& where, std::string message) {
    if (warnings_.size() >= kMaxWarnings) {
        ++unrecordedWarnings_;
        return;
    }
    warnings_.push_back({fileName_, where, std::move(message)});
}

void DiagnosticLog::Fail(const SourceLocation& where, std::string message) {
    errors_.push_back({fileName_, where, std::move(message)});
}

void DiagnosticLog::TakeInto(std::vector<Diagnostic>& warnings, std::vector<Diagnostic>& errors) {
    if (unrecordedWarnings_ != 0) {
        warnings_.push_back(
            {fileName_, {}, std::to_string(unrecordedWarnings_) + " more warnings not listed"});
        unrecordedWarnings_ = 0;
    }
    warnings = std::move(warnings_);
    errors = std::move(errors_);
    warnings_.clear();
    errors_.clear();
}

} // namespace captionformats
