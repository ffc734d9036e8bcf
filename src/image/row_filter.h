#pragma once

#include <cstddef>
#include <cstdint>

/// Divides a sum of `count` bytes by that count with one multiplication.
///
/// It multiplies the sum by r = floor(2^56 / count) + 1 = (2^56 + e) / count, with e <= count, and
/// drops the low 56 bits. The result is exact for counts up to 2^24: the product exceeds the exact
/// one by sum * e / count, which does not reach the next quotient as long as sum * e < 2^56, and
/// sum * e <= 255 * count * count. The product is at most 255 * (2^56 + count), which fits 64 bits.
class MeanOf {
public:
    static constexpr std::uint64_t kMaxCount = 1U << 24U;

    explicit MeanOf(std::size_t count) noexcept : reciprocal_((1ULL << kShift) / count + 1) {}
    std::uint8_t operator()(std::uint32_t sum) const noexcept {
        return static_cast<std::uint8_t>((sum * reciprocal_) >> kShift);
    }

private:
    static constexpr unsigned kShift = 56;
    std::uint64_t reciprocal_;
};

/// Index of the first source pixel of the new pixel `target` when `from` pixels become `to`: the
/// first i for which the integer division i * to / from gives `target`. Computed in 64 bits,
/// because JPEG sides go up to 65535 and their products exceed 32 bits.
inline std::uint64_t FirstSource(std::uint64_t target, std::uint64_t from,
                                 std::uint64_t to) noexcept {
    return (target * from + to - 1) / to;
}

/// Shrinks single rows of 3-byte pixels with a box filter: a new pixel is the mean of the source
/// pixels in its box. The first pixel of a row counts twice. When from == to, copies the rows.
class RowFilter {
public:
    /// @param starts  array of to + 1 numbers, which the constructor fills; must outlive the filter
    RowFilter(std::size_t from, std::size_t to, std::uint32_t* starts) noexcept;

    /// Filters one row. `target` may be `source` or lie before it, because a pixel is written after
    /// its source pixels were read.
    void Apply(const std::uint8_t* source, std::uint8_t* target) const noexcept;

private:
    void WriteBox(const std::uint8_t* source, std::size_t i, std::uint8_t* target) const noexcept;
    void WriteBoxes(const std::uint8_t* source, std::uint8_t* target) const noexcept;
    void WritePairs(const std::uint8_t* source, std::uint8_t* target) const noexcept;

    std::size_t size_;
    std::size_t fewBytes_;  ///< source bytes of a new pixel; some new pixels have a pixel more
    bool keepsLength_;
    bool atMostTwo_;
    const std::uint32_t* starts_;
    MeanOf meanOfFirst_;
    MeanOf meanOfFew_;
    MeanOf meanOfMany_;
};
