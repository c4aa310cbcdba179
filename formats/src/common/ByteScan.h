#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace captionformats {

#if defined(__SSE2__)
// Bit i set where byte i of the block is one of `Wanted`.
template <char... Wanted> unsigned WantedMask(__m128i block) {
    __m128i hits = _mm_setzero_si128();
    ((hits = _mm_or_si128(hits, _mm_cmpeq_epi8(block, _mm_set1_epi8(Wanted)))), ...);
    return static_cast<unsigned>(_mm_movemask_epi8(hits));
}
#endif

// Where the first of the bytes `Wanted` at or after `from` is, or text.size().
// Readers and writers look for a few markup bytes in text that mostly holds
// none: the scan takes 16 or 8 bytes at a time where it can, and one table
// look-up per byte for the rest.
template <char... Wanted> std::size_t FindFirstOf(std::string_view text, std::size_t from) {
#if defined(__SSE2__)
    const char* data = text.data();
    for (; from + 16 <= text.size(); from += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + from));
        if (const unsigned mask = WantedMask<Wanted...>(block)) {
            return from + static_cast<std::size_t>(std::countr_zero(mask));
        }
    }
    if (from + 8 <= text.size()) {
        const __m128i block = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(data + from));
        if (const unsigned mask = WantedMask<Wanted...>(block) & 0xFFu) {
            return from + static_cast<std::size_t>(std::countr_zero(mask));
        }
        from += 8;
    }
#endif
    static constexpr std::array<bool, 256> kWanted = [] {
        std::array<bool, 256> wanted{};
        ((wanted[static_cast<unsigned char>(Wanted)] = true), ...);
        return wanted;
    }();
    while (from < text.size() && !kWanted[static_cast<unsigned char>(text[from])]) {
        ++from;
    }
    return from;
}

} // namespace captionformats
