#pragma once

#include <stdexcept>
#include <string>

namespace KSL {

// The host's failure report: a broken precondition of a host call (an empty
// reference where an object is required, an object that is not part of the
// project it is used with). The text is UTF-8 and meant for developers.
class Exception : public std::runtime_error {
public:
    explicit Exception(const std::string& whatUtf8)
        : std::runtime_error(whatUtf8) {}
};

} // namespace KSL
