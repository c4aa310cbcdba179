#include "captionformats/Diagnostic.h"

#include <ostream>

namespace captionformats {

std::string ToString(const Diagnostic& diagnostic) {
    std::string text = diagnostic.fileName.empty() ? std::string("<input>") : diagnostic.fileName;
    const SourceLocation& where = diagnostic.location;
    if (where.byteOffset) {
        text += ": byte " + std::to_string(*where.byteOffset);
    } else if (where.line != 0) {
        text += ':' + std::to_string(where.line);
        if (where.column != 0) {
            text += ':' + std::to_string(where.column);
        }
    }
    return text + ": " + diagnostic.message;
}

std::ostream& operator<<(std::ostream& os, const Diagnostic& diagnostic) {
    return os << ToString(diagnostic);
}

} // namespace captionformats
