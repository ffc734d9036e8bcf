#include "image/red_blue.h"

#include <emmintrin.h>  // SSE2: every x86-64 has it

namespace {

constexpr std::size_t kChannels = 3;

}  // namespace

void CopyExchangingRedBlue(const std::uint8_t* source, std::size_t count,
                           std::uint8_t* target) noexcept {
    constexpr std::size_t kPixels = 5;  // that fit into 16 bytes; the last byte waits for its round
    const __m128i first = _mm_setr_epi8(-1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, -1, 0, 0, 0);
    const __m128i last = _mm_slli_si128(first, 2);
    const __m128i kept = _mm_xor_si128(_mm_or_si128(first, last), _mm_set1_epi8(-1));
    std::size_t i = 0;
    for (; i + kPixels < count; i += kPixels) {
        const auto* const from = reinterpret_cast<const __m128i*>(source + i * kChannels);
        const __m128i pixels = _mm_loadu_si128(from);
        const __m128i ends = _mm_or_si128(_mm_and_si128(_mm_srli_si128(pixels, 2), first),
                                          _mm_and_si128(_mm_slli_si128(pixels, 2), last));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target + i * kChannels),
                         _mm_or_si128(_mm_and_si128(pixels, kept), ends));
    }
    for (; i < count; ++i) {
        const std::uint8_t* const pixel = source + i * kChannels;
        const std::uint8_t swapped[kChannels] = {pixel[2], pixel[1], pixel[0]};
        for (std::size_t c = 0; c < kChannels; ++c) target[i * kChannels + c] = swapped[c];
    }
}
