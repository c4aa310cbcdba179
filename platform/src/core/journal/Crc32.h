#pragma once

#include <cstdint>
#include <string_view>

namespace platform::core {

// CRC-32 as zlib and PNG compute it (polynomial 0xEDB88320, reflected,
// initial value and final XOR 0xFFFFFFFF): "123456789" gives 0xCBF43926.
std::uint32_t Crc32(std::string_view bytes);

} // namespace platform::core
