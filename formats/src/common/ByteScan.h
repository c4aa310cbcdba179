#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace captionformats {

// Where the first of the bytes `Wanted` at or after `from` is, or text.size().
// Readers and writers look for a few markup bytes in text that mostly holds
// none: the scan takes 16 bytes at a time where it can, and one table look-up
// per byte for the rest.
template <char... Wanted> std::size_t FindFirstOf(std::string_view text, std::size_t from) {
#if defined(__SSE2__)
    for (; from + 16 <= text.size(); from += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + from));
        __m128i hits = _mm_setzero_si128();
        ((hits = _mm_or_si128(hits, _mm_cmpeq_epi8(block, _mm_set1_epi8(Wanted)))), ...);
        if (const auto mask = static_cast<unsigned>(_mm_movemask_epi8(hits))) {
            return from + static_cast<std::size_t>(std::countr_zero(mask));
        }
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
