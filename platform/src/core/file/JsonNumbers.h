#pragma once

#include <QJsonValue>

#include <boost/rational.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform::core {

// The double whose shortest decimal form is the float's shortest decimal form
// ("0.8", not "0.800000011920929"), so that a float is written readably and
// reads back as the same float.
double FloatAsShortestDouble(float value);

// The nearest float, or nothing when the value is beyond a float's range.
std::optional<float> NarrowToFloat(double value);

std::string Int64ToString(std::int64_t value);
std::optional<std::int64_t> ParseInt64(std::string_view text);

std::string RationalToString(const boost::rational<std::int64_t>& value);
std::optional<boost::rational<std::int64_t>> ParseRational(std::string_view text);

} // namespace platform::core
