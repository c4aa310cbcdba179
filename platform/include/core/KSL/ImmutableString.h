#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

namespace KSL {

// A UTF-8 string that never changes after construction; copies share one
// buffer, so passing it around costs a reference count, not an allocation.
// A default-constructed string is null, which is distinct from the empty string.
class ImmutableString {
public:
    ImmutableString() = default;
    ImmutableString(const char* utf8);
    ImmutableString(std::string_view utf8);
    ImmutableString(std::string utf8);

    bool IsNull() const { return !text_; }
    std::string_view View() const { return text_ ? std::string_view(*text_) : std::string_view(); }
    const std::string& Str() const;

    friend bool operator==(const ImmutableString& a, const ImmutableString& b) {
        return a.IsNull() == b.IsNull() && a.View() == b.View();
    }
    friend bool operator<(const ImmutableString& a, const ImmutableString& b) {
        return a.IsNull() != b.IsNull() ? a.IsNull() : a.View() < b.View();
    }

private:
    std::shared_ptr<const std::string> text_;
};

std::ostream& operator<<(std::ostream& os, const ImmutableString& s);

// Stations are named by strings; two stations with the same name are the same station.
using StationID = ImmutableString;

} // namespace KSL

template <> struct std::hash<KSL::ImmutableString> {
    std::size_t operator()(const KSL::ImmutableString& s) const noexcept {
        return std::hash<std::string_view>()(s.View());
    }
};
