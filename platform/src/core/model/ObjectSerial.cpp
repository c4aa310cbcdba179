#include "ObjectSerial.h"

#include <atomic>
#include <cstdint>
#include <string>

namespace platform::core {

KSL::StationID MakeUniqueStationID(std::string_view prefix) {
    static std::atomic<std::uint64_t> nextSerial{1};
    std::string name(prefix);
    name += '.';
    name += std::to_string(nextSerial.fetch_add(1));
    return KSL::StationID(std::move(name));
}

} // namespace platform::core
