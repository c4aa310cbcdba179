#include "Crc32.h"

#include <array>

namespace platform::core {
namespace {

constexpr std::array<std::uint32_t, 256> MakeTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t n = 0; n < 256; ++n) {
        std::uint32_t c = n;
        for (int bit = 0; bit < 8; ++bit) {
            c = (c & 1) ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        }
        table[n] = c;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

} // namespace

std::uint32_t Crc32(std::string_view bytes) {
    std::uint32_t c = 0xFFFFFFFFu;
    for (const char byte : bytes) {
        c = kTable[(c ^ static_cast<unsigned char>(byte)) & 0xFFu] ^ (c >> 8);
    }
    return c ^ 0xFFFFFFFFu;
}

} // namespace platform::core
