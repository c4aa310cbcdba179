#pragma once

#include <string>
#include <string_view>

namespace captioncli {

// A JSON string literal of UTF-8 text, quotes included.
std::string JsonString(std::string_view utf8);

} // namespace captioncli
