#pragma once

#include "captionformats/Diagnostic.h"
#include "zelcaptioning/Caption.h"

#include <string>
#include <vector>

namespace captionformats {

// What a reader made of a file. Warnings list what was skipped or approximated;
// errors say why the file as a whole could not be read (then the captions hold
// whatever came before the failure, usually nothing).
struct ReadResult {
    std::vector<zelcaptioning::CaptionPtr> captions;
    zelcaptioning::StreamFormat streamFormat = zelcaptioning::kStreamFormat_None;
    std::vector<Diagnostic> warnings;
    std::vector<Diagnostic> errors;

    bool Succeeded() const { return errors.empty(); }
};

// A written file. Warnings report what the format could not carry (a dropped
// attribute, a rounded time); errors say why nothing usable was written.
struct WriteResult {
    std::string bytes;
    std::vector<Diagnostic> warnings;
    std::vector<Diagnostic> errors;

    bool Succeeded() const { return errors.empty(); }
};

} // namespace captionformats
