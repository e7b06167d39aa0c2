// SPDX-License-Identifier: MIT
/*
 * Units as they travel: XDR's four and eight bytes, the highest first, at any
 * address, and the fields that they fill. What knows the count while compiling
 * is unrolled where it is used.
 */
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace wire {

static_assert(std::endian::native == std::endian::little || std::endian::native == std::endian::big);

inline uint32_t big_endian(uint32_t word)
{
    return std::endian::native == std::endian::little ? __builtin_bswap32(word) : word;
}

inline uint64_t big_endian(uint64_t word)
{
    return std::endian::native == std::endian::little ? __builtin_bswap64(word) : word;
}

#ifdef __SSE2__
/** Sixteen bytes of words with their bytes turned: in pairs, then the pairs in each word. */
template <class Word> __m128i turned(__m128i words)
{
    words = _mm_or_si128(_mm_slli_epi16(words, 8), _mm_srli_epi16(words, 8));
    constexpr int order = sizeof(Word) == 4 ? _MM_SHUFFLE(2, 3, 0, 1) : _MM_SHUFFLE(0, 1, 2, 3);
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(words, order), order);
}
#endif

/** Copies count integers, turning their bytes; either side may be unaligned. */
template <class Word>
[[gnu::always_inline]] inline void swap_words(void *to, const void *from, uint32_t count)
{
    uint32_t i = 0;
#ifdef __SSE2__
    constexpr uint32_t at_once = sizeof(__m128i) / sizeof(Word);
    for (; i + at_once <= count; i += at_once) {
        const __m128i words =
            _mm_loadu_si128(reinterpret_cast<const __m128i *>(static_cast<const Word *>(from) + i));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(static_cast<Word *>(to) + i), turned<Word>(words));
    }
#endif
    for (; i < count; i++) {
        Word word;
        std::memcpy(&word, static_cast<const uint8_t *>(from) + i * sizeof word, sizeof word);
        word = big_endian(word);
        std::memcpy(static_cast<uint8_t *>(to) + i * sizeof word, &word, sizeof word);
    }
}

#ifdef __SSE2__
/** Four units as words: the low byte of a big-endian unit is the top one of a loaded word. */
inline __m128i load_units(const uint8_t *from)
{
    return _mm_srli_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i *>(from)), 24);
}
#endif

/** The low byte of each of count units: sixteen, then four, then one at a time. */
[[gnu::always_inline]] inline void gather_bytes(uint8_t *to, const uint8_t *from, uint32_t count)
{
    uint32_t i = 0;
#ifdef __SSE2__
    for (; i + 16 <= count; i += 16) {
        const uint8_t *units = from + 4 * i;
        const __m128i low = _mm_packs_epi32(load_units(units), load_units(units + 16));
        const __m128i high = _mm_packs_epi32(load_units(units + 32), load_units(units + 48));
        _mm_storeu_si128(reinterpret_cast<__m128i *>(to + i), _mm_packus_epi16(low, high));
    }
    // The last four overlap those before them, where there are that many.
    while (count >= 4 && i < count) {
        i = std::min(i, count - 4);
        const __m128i words = load_units(from + 4 * i);
        const __m128i halves = _mm_packs_epi32(words, words);
        const int bytes = _mm_cvtsi128_si32(_mm_packus_epi16(halves, halves));
        std::memcpy(to + i, &bytes, sizeof bytes);
        i += 4;
    }
#endif
    for (; i < count; i++)
        to[i] = from[4 * i + 3];
}

} // namespace wire
