#include "image/row_means.h"

#include <emmintrin.h>  // SSE2: every x86-64 has it

#include "image/pixel_block.h"

namespace {

// Bytes of the two pixels that a box of 2 x 2 pixels has in one row.
constexpr std::size_t kBoxBytes = std::size_t{2} * kRgbBytes;

/// (a + b) / 2 of each byte, rounded down.
__m128i MeanOfBytes(__m128i a, __m128i b) noexcept {
    const __m128i roundedUp = _mm_avg_epu8(a, b);
    return _mm_sub_epi8(roundedUp, _mm_and_si128(_mm_xor_si128(a, b), _mm_set1_epi8(1)));
}

__m128i Load(const std::uint8_t* from) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
}

void Store(std::uint8_t* to, __m128i bytes) noexcept {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), bytes);
}

/// 255 - byte for each of 16 bytes. _mm_avg_epu8 rounds up, so the mean of two complements is the
/// complement of their mean rounded down; means of means then need no other correction.
__m128i LoadComplement(const std::uint8_t* from) noexcept {
    return _mm_xor_si128(Load(from), _mm_set1_epi8(-1));
}

/// The complement of the mean of each pixel and the next pixel. The caller uses only the bytes at
/// the start of each box: the bytes 0 to 2, 6 to 8 and 12 to 14 of the 16 bytes.
__m128i NeighboursComplement(const std::uint8_t* pixels) noexcept {
    return _mm_avg_epu8(LoadComplement(pixels), LoadComplement(pixels + kRgbBytes));
}

/// Writes the new pixels in groups of three, from the first pixel on. @return number of the pixels
/// written
std::size_t HalveInThrees(const std::uint8_t* first, const std::uint8_t* second, std::size_t size,
                          std::uint8_t* target) noexcept {
    constexpr std::size_t kBoxes = 3;
    constexpr std::size_t kTouched = 6;  // new pixels whose bytes a group may read or write
    // Masks of the three new pixels.
    const __m128i box0 = _mm_setr_epi32(0x00FFFFFF, 0, 0, 0);
    const __m128i box1 = _mm_slli_si128(box0, 3);
    const __m128i box2 = _mm_slli_si128(box0, 6);
    std::size_t i = 0;
    for (; i + kTouched <= size; i += kBoxes) {
        const __m128i complement = _mm_avg_epu8(NeighboursComplement(first + i * kBoxBytes),
                                                NeighboursComplement(second + i * kBoxBytes));
        const __m128i boxes01 = _mm_or_si128(_mm_andnot_si128(complement, box0),
                                             _mm_andnot_si128(_mm_srli_si128(complement, 3), box1));
        const __m128i boxes =
            _mm_or_si128(boxes01, _mm_andnot_si128(_mm_srli_si128(complement, 6), box2));
        // This also writes bytes behind the three pixels; later pixels overwrite them.
        Store(target + i * kRgbBytes, boxes);
    }
    return i;
}

}  // namespace

void MeanOfRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t bytes,
                std::uint8_t* target) noexcept {
    std::size_t i = 0;
    for (; i + sizeof(__m128i) <= bytes; i += sizeof(__m128i)) {
        Store(target + i, MeanOfBytes(Load(first + i), Load(second + i)));
    }
    for (; i < bytes; ++i) target[i] = static_cast<std::uint8_t>((first[i] + second[i]) / 2);
}

void HalveRows(const std::uint8_t* first, const std::uint8_t* second, std::size_t size,
               std::uint8_t* target) noexcept {
    for (std::size_t i = HalveInThrees(first, second, size, target); i < size; ++i) {
        const std::uint8_t* const a = first + i * kBoxBytes;
        const std::uint8_t* const b = second + i * kBoxBytes;
        for (std::size_t c = 0; c < kRgbBytes; ++c) {
            const int means = (a[c] + a[c + kRgbBytes]) / 2 + (b[c] + b[c + kRgbBytes]) / 2;
            target[i * kRgbBytes + c] = static_cast<std::uint8_t>(means / 2);
        }
    }
    // The first pixel of each row counts twice, so its box has three pixels.
    for (std::size_t c = 0; c < kRgbBytes; ++c) {
        const int means =
            (2 * first[c] + first[c + kRgbBytes]) / 3 + (2 * second[c] + second[c + kRgbBytes]) / 3;
        target[c] = static_cast<std::uint8_t>(means / 2);
    }
}
