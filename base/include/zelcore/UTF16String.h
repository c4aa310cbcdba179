#pragma once

#include "zelcore/utility/SmallBlockAllocator.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace zelcore {

// The host's string: UTF-16 code units in pooled small blocks. Lengths and
// offsets are counted in code units, so a character outside the basic plane
// counts two.
using UTF16String =
    std::basic_string<char16_t, std::char_traits<char16_t>, utility::SmallBlockAllocator<char16_t>>;

// Narrow strings are UTF-8.
using UTF8String = std::string;

// Converts UTF-8 to UTF-16. A malformed byte sequence becomes U+FFFD.
UTF16String ToUTF16(std::string_view utf8);

// Converts UTF-16 to UTF-8. An unpaired surrogate becomes U+FFFD.
UTF8String ToUTF8(std::u16string_view utf16);
inline UTF8String ToUTF8(const UTF16String& utf16) {
    return ToUTF8(std::u16string_view(utf16.data(), utf16.size()));
}

inline std::u16string_view View(const UTF16String& s) {
    return {s.data(), s.size()};
}

namespace utility {
// Prints as UTF-8 in double quotes, so test failures read well. Declared here
// because argument-dependent lookup finds it through the allocator's namespace.
std::ostream& operator<<(std::ostream& os, const UTF16String& s);
} // namespace utility

} // namespace zelcore
