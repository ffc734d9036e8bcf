#include "image/red_blue.h"

#include <emmintrin.h>  // SSE2: every x86-64 has it

#include "image/pixel_block.h"

namespace {

// Whole pixels in the 16 bytes of a register; 1 byte is left over.
constexpr std::size_t kPixels = 5;

__m128i LoadAt(const std::uint8_t* pixels, std::size_t i) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels + i * kRgbBytes));
}

/// Exchanges bytes 0 and 2 of each of five pixels; the last byte stays unchanged.
__m128i Exchanged(__m128i pixels) noexcept {
    // Masks of byte 0 and byte 2 of each pixel, and of all other bytes.
    const __m128i first = _mm_setr_epi8(-1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0);
    const __m128i last = _mm_slli_si128(first, 2);
    const __m128i kept = _mm_xor_si128(_mm_or_si128(first, last), _mm_set1_epi8(-1));
    const __m128i ends = _mm_or_si128(_mm_and_si128(_mm_srli_si128(pixels, 2), first),
                                      _mm_and_si128(_mm_slli_si128(pixels, 2), last));
    return _mm_or_si128(_mm_and_si128(pixels, kept), ends);
}

}  // namespace

void CopyExchangingRedBlue(const std::uint8_t* source, std::size_t count,
                           std::uint8_t* target) noexcept {
    std::size_t i = 0;
    if (count > kPixels) {
        // Read the next pixels before the present pixels are written: when `target` is `source`,
        // the two overlap by a byte, and reading bytes just after they were written would be slow.
        __m128i pixels = LoadAt(source, 0);
        for (; i + 2 * kPixels < count; i += kPixels) {
            const __m128i next = LoadAt(source, i + kPixels);
            _mm_storeu_si128(reinterpret_cast<__m128i*>(target + i * kRgbBytes), Exchanged(pixels));
            pixels = next;
        }
    }
    for (; i < count; ++i) {
        const std::uint8_t* const pixel = source + i * kRgbBytes;
        const std::uint8_t swapped[kRgbBytes] = {pixel[2], pixel[1], pixel[0]};
        for (std::size_t c = 0; c < kRgbBytes; ++c) target[i * kRgbBytes + c] = swapped[c];
    }
}
