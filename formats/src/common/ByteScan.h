#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
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

// Bit i set where byte i of `text`, at most 64 bytes long, is one of
// `Wanted`: all of a short text's marks found at once, for a caller that goes
// from one to the next without scanning again.
template <char... Wanted> std::uint64_t WantedBits(std::string_view text) {
    std::uint64_t bits = 0;
    std::size_t at = 0;
#if defined(__SSE2__)
    const char* data = text.data();
    for (; at + 16 <= text.size(); at += 16) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + at));
        bits |= std::uint64_t{WantedMask<Wanted...>(block)} << at;
    }
    if (at < text.size() && text.size() >= 16) {
        // The last 16 bytes, overlapping the block before.
        const std::size_t last = text.size() - 16;
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(data + last));
        return bits | std::uint64_t{WantedMask<Wanted...>(block)} << last;
    }
#endif
    for (; at < text.size(); ++at) {
        bits |= std::uint64_t{((text[at] == Wanted) || ...)} << at;
    }
    return bits;
}

} // namespace captionformats
