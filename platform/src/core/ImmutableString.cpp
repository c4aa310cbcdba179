#include "KSL/ImmutableString.h"

#include <ostream>

namespace KSL {

ImmutableString::ImmutableString(const char* utf8)
    : ImmutableString(std::string_view(utf8 ? utf8 : "")) {}

ImmutableString::ImmutableString(std::string_view utf8)
    : text_(std::make_shared<const std::string>(utf8)) {}

ImmutableString::ImmutableString(std::string utf8)
    : text_(std::make_shared<const std::string>(std::move(utf8))) {}

const std::string& ImmutableString::Str() const {
    static const std::string kEmpty;
    return text_ ? *text_ : kEmpty;
}

std::ostream& operator<<(std::ostream& os, const ImmutableString& s) {
    return s.IsNull() ? os << "(null)" : os << '"' << s.View() << '"';
}

} // namespace KSL
