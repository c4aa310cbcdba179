#include "JsonNumbers.h"

#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace platform::core {

double FloatAsShortestDouble(float value) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    double widened = 0;
    std::from_chars(buffer, result.ptr, widened);
    return widened;
}

std::optional<float> NarrowToFloat(double value) {
    if (!std::isfinite(value) || std::fabs(value) > std::numeric_limits<float>::max()) {
        return std::nullopt;
    }
    return static_cast<float>(value);
}

std::string Int64ToString(std::int64_t value) {
    return std::to_string(value);
}

std::optional<std::int64_t> ParseInt64(std::string_view text) {
    std::int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) {
        return std::nullopt;
    }
    return value;
}

std::string RationalToString(const boost::rational<std::int64_t>& value) {
    return Int64ToString(value.numerator()) + "/" + Int64ToString(value.denominator());
}

std::optional<boost::rational<std::int64_t>> ParseRational(std::string_view text) {
    const auto slash = text.find('/');
    if (slash == std::string_view::npos) {
        return std::nullopt;
    }
    const auto numerator = ParseInt64(text.substr(0, slash));
    const auto denominator = ParseInt64(text.substr(slash + 1));
    if (!numerator || !denominator || *denominator <= 0) {
        return std::nullopt;
    }
    return boost::rational<std::int64_t>(*numerator, *denominator);
}

} // namespace platform::core
