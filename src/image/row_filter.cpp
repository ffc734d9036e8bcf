#include "image/row_filter.h"

#include <cstring>

#include "image/pixel_block.h"

namespace {

constexpr std::uint32_t kLow7BitsOfBytes = 0x7F7F7F7F;

/// (a + b) / 2 of each of four bytes, rounded down.
std::uint32_t MeanOfFourBytes(const std::uint8_t* a, const std::uint8_t* b) noexcept {
    std::uint32_t first;
    std::uint32_t second;
    std::memcpy(&first, a, sizeof first);
    std::memcpy(&second, b, sizeof second);
    return (first & second) + (((first ^ second) >> 1U) & kLow7BitsOfBytes);
}

/// Writes the mean of the pixels from `source` to `end`.
/// @param extraFirst  how many additional times the first pixel counts
void WritePixel(const std::uint8_t* source, const std::uint8_t* end, std::uint32_t extraFirst,
                MeanOf mean, std::uint8_t* target) noexcept {
    std::uint32_t sums[kRgbBytes] = {source[0] * extraFirst, source[1] * extraFirst,
                                     source[2] * extraFirst};
    for (; source != end; source += kRgbBytes) {
        sums[0] += source[0];
        sums[1] += source[1];
        sums[2] += source[2];
    }
    target[0] = mean(sums[0]);
    target[1] = mean(sums[1]);
    target[2] = mean(sums[2]);
}

}  // namespace

RowFilter::RowFilter(std::size_t from, std::size_t to, std::uint32_t* starts) noexcept
    : size_(to),
      fewBytes_(from / to * kRgbBytes),
      keepsLength_(from == to),
      atMostTwo_(from <= 2 * to),
      starts_(starts),
      meanOfFirst_(1),
      meanOfFew_(from / to),
      meanOfMany_(from / to + 1) {
    for (std::size_t i = 0; i <= to; ++i) {
        starts[i] = static_cast<std::uint32_t>(FirstSource(i, from, to) * kRgbBytes);
    }
    meanOfFirst_ = MeanOf(starts[1] / kRgbBytes + std::size_t{1});
}

void RowFilter::Apply(const std::uint8_t* source, std::uint8_t* target) const noexcept {
    if (keepsLength_) {
        if (target != source) std::memmove(target, source, size_ * kRgbBytes);
        return;
    }
    WritePixel(source, source + starts_[1], 1, meanOfFirst_, target);
    if (atMostTwo_) {
        WritePairs(source, target);
    } else {
        WriteBoxes(source, target);
    }
}

void RowFilter::WriteBox(const std::uint8_t* source, std::size_t i,
                         std::uint8_t* target) const noexcept {
    const bool hasFew = starts_[i + 1] - starts_[i] == fewBytes_;
    WritePixel(source + starts_[i], source + starts_[i + 1], 0, hasFew ? meanOfFew_ : meanOfMany_,
               target + i * kRgbBytes);
}

void RowFilter::WriteBoxes(const std::uint8_t* source, std::uint8_t* target) const noexcept {
    for (std::size_t i = 1; i < size_; ++i) WriteBox(source, i, target);
}

// Each of these boxes has one or two pixels, so its mean is the mean of its first and last pixel.
void RowFilter::WritePairs(const std::uint8_t* source, std::uint8_t* target) const noexcept {
    if (size_ == 1) return;
    // MeanOfFourBytes must not read the last box, because the row may end after three bytes.
    const std::size_t last = size_ - 1;
    // Local copies: for all that the compiler knows, a store to `target` could change the members.
    const std::uint32_t* const starts = starts_;
    const std::uint8_t* box = source + starts[1];
    for (std::size_t i = 1; i < last; ++i) {
        const std::uint8_t* const next = source + starts[i + 1];
        const std::uint32_t mean = MeanOfFourBytes(box, next - kRgbBytes);
        std::memcpy(target + i * kRgbBytes, &mean, kRgbBytes);
        box = next;
    }
    WriteBox(source, last, target);
}
