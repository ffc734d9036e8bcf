#include "image/resample.h"

#include <cstring>
#include <memory>
#include <new>

#include "image/red_blue.h"
#include "image/row_means.h"

namespace {

constexpr std::size_t kChannels = 3;
constexpr std::size_t kMaxNarrowCount = 4096;  // 255 * 4096 * 4096 < 2^32

/// Divides a sum of `count` bytes by that count with one multiplication.
///
/// Exact for counts up to 2^24: with r = floor(2^56 / count) + 1 = (2^56 + e) / count, e <= count,
/// the product is too large by sum * e / count parts of 2^56. It stays below the next quotient as
/// long as sum * e < 2^56, and 255 * count * count is. It fits 64 bits: 255 * (2^56 + count).
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

/// Where the sources of target `target` begin when `from` pixels become `to`: the first i with
/// i * to / from == target. JPEG sides go to 65535, whose products leave 32 bits.
std::uint64_t FirstSource(std::uint64_t target, std::uint64_t from, std::uint64_t to) noexcept {
    return (target * from + to - 1) / to;
}

/// Shrinks single rows.
class RowFilter {
public:
    /// @param starts  room for to + 1 numbers, filled here; must outlive the filter
    RowFilter(std::size_t from, std::size_t to, std::uint32_t* starts) noexcept
        : size_(to),
          few_(from / to),
          keepsLength_(from == to),
          atMostTwo_(from <= 2 * to),
          starts_(starts),
          meanOfFirst_(1),
          meanOfFew_(few_),
          meanOfMany_(few_ + 1) {
        for (std::size_t i = 0; i <= to; ++i) {
            starts[i] = static_cast<std::uint32_t>(FirstSource(i, from, to));
        }
        meanOfFirst_ = MeanOf(starts[1] + std::size_t{1});
    }

    /// `target` may be `source` or lie before it: a pixel is written after its sources were read.
    void Apply(const std::uint8_t* source, std::uint8_t* target) const noexcept {
        if (keepsLength_) {
            if (target != source) std::memmove(target, source, size_ * kChannels);
            return;
        }
        WritePixel(source, starts_[1], 1, meanOfFirst_, target);
        if (atMostTwo_) {
            WritePairs(source, target);
        } else {
            WriteBoxes(source, target);
        }
    }

private:
    void WriteBoxes(const std::uint8_t* source, std::uint8_t* target) const noexcept {
        for (std::size_t i = 1; i < size_; ++i) {
            const std::size_t count = starts_[i + 1] - starts_[i];
            WritePixel(source + starts_[i] * kChannels, count, 0,
                       count == few_ ? meanOfFew_ : meanOfMany_, target + i * kChannels);
        }
    }

    /// Boxes of one or two pixels, without telling them apart: the mean of the first and the last.
    void WritePairs(const std::uint8_t* source, std::uint8_t* target) const noexcept {
        for (std::size_t i = 1; i + 1 < size_; ++i) {
            const std::uint32_t mean = MeanOfFourBytes(source + starts_[i] * kChannels,
                                                       source + (starts_[i + 1] - 1) * kChannels);
            std::memcpy(target + i * kChannels, &mean, kChannels);
        }
        if (size_ < 2) return;
        // Behind the last one there may be no fourth byte to read.
        const std::size_t i = size_ - 1;
        const std::size_t count = starts_[size_] - starts_[i];
        WritePixel(source + starts_[i] * kChannels, count, 0,
                   count == few_ ? meanOfFew_ : meanOfMany_, target + i * kChannels);
    }

    /// (a + b) / 2, rounded down, byte by byte.
    static std::uint32_t MeanOfFourBytes(const std::uint8_t* a, const std::uint8_t* b) noexcept {
        std::uint32_t first;
        std::uint32_t second;
        std::memcpy(&first, a, sizeof first);
        std::memcpy(&second, b, sizeof second);
        return (first & second) + (((first ^ second) >> 1U) & 0x7F7F7F7FU);
    }

    static void WritePixel(const std::uint8_t* source, std::size_t count, std::uint32_t seed,
                           MeanOf mean, std::uint8_t* target) noexcept {
        std::uint32_t sums[kChannels] = {source[0] * seed, source[1] * seed, source[2] * seed};
        for (const std::uint8_t* end = source + count * kChannels; source != end;
             source += kChannels) {
            sums[0] += source[0];
            sums[1] += source[1];
            sums[2] += source[2];
        }
        target[0] = mean(sums[0]);
        target[1] = mean(sums[1]);
        target[2] = mean(sums[2]);
    }

    std::size_t size_;
    std::size_t few_;  ///< pixels gathered by a new one; some gather one more
    bool keepsLength_;
    bool atMostTwo_;
    const std::uint32_t* starts_;
    MeanOf meanOfFirst_;
    MeanOf meanOfFew_;
    MeanOf meanOfMany_;
};

void AddRow(const std::uint8_t* row, std::size_t bytes, std::uint32_t* sums) noexcept {
    for (std::size_t i = 0; i < bytes; ++i) sums[i] += row[i];
}

void WriteMeans(const std::uint32_t* sums, std::size_t bytes, std::size_t count,
                std::uint8_t* target) noexcept {
    if (count > 1 && count <= kMaxNarrowCount) {
        // As in MeanOf with 2^32 for 2^56, which the compiler can do for several sums at once.
        const auto reciprocal = static_cast<std::uint32_t>((1ULL << 32U) / count + 1);
        for (std::size_t i = 0; i < bytes; ++i) {
            target[i] = static_cast<std::uint8_t>((std::uint64_t{sums[i]} * reciprocal) >> 32U);
        }
        return;
    }
    const MeanOf mean(count);
    for (std::size_t i = 0; i < bytes; ++i) target[i] = mean(sums[i]);
}

/// Where the old rows lie and where each may be filtered to.
struct RowPlaces {
    const std::uint8_t* source;
    std::ptrdiff_t sourceStride;
    std::uint8_t* filtered;  ///< by the same stride; null: two spare rows serve them in turns
};

/// Numbers that are needed while a block shrinks.
class WorkingMemory {
public:
    /// @param spareRows  also room for two filtered rows
    WorkingMemory(std::size_t width, bool spareRows) noexcept
        : bytes_(width * kChannels),
          spareNumbers_(spareRows ? (2 * bytes_ + sizeof(std::uint32_t) - 1) / sizeof(std::uint32_t)
                                  : 0),
          block_(new (std::nothrow) std::uint32_t[bytes_ + width + 1 + spareNumbers_]) {}

    bool IsThere() const noexcept { return block_ != nullptr; }
    /// One for each byte of a new row.
    std::uint32_t* Sums() const noexcept { return block_.get() + spareNumbers_; }
    /// One for each new column, and one more.
    std::uint32_t* Starts() const noexcept { return Sums() + bytes_; }
    std::uint8_t* SpareRows() const noexcept {
        return reinterpret_cast<std::uint8_t*>(block_.get());
    }

private:
    std::size_t bytes_;
    std::size_t spareNumbers_;
    std::unique_ptr<std::uint32_t[]> block_;
};

/// Writes the new rows, from the first to the last.
class RowShrinker {
public:
    RowShrinker(const RowPlaces& places, BlockSize from, BlockSize to,
                const WorkingMemory& memory) noexcept
        : places_(places),
          from_(from),
          to_(to),
          sums_(memory.Sums()),
          spareRows_(memory.SpareRows()),
          filter_(from.width, to.width, memory.Starts()) {}

    void WriteRow(std::size_t row, std::uint8_t* target) const noexcept {
        const std::uint64_t begin = FirstSource(row, from_.height, to_.height);
        const std::uint64_t end = FirstSource(row + 1, from_.height, to_.height);
        const bool firstTwice = row == 0 && from_.height > to_.height;
        if (firstTwice || end - begin > 2) {
            WriteSums(begin, end, firstTwice, target);
        } else if (end - begin == 1) {
            filter_.Apply(Source(begin), target);
        } else if (from_.width == 2 * to_.width) {
            HalveRows(Source(begin), Source(begin + 1), to_.width, target);
        } else {
            const std::uint8_t* const first = Filtered(begin);
            MeanOfRows(first, Filtered(begin + 1), to_.width * kChannels, target);
        }
    }

private:
    const std::uint8_t* Source(std::uint64_t row) const noexcept {
        return places_.source + static_cast<std::ptrdiff_t>(row) * places_.sourceStride;
    }

    /// The row after the first pass, which rounds to bytes by itself. It stays until the next but
    /// one is asked for.
    const std::uint8_t* Filtered(std::uint64_t row) const noexcept {
        const auto at = static_cast<std::ptrdiff_t>(row);
        std::uint8_t* const place =
            places_.filtered != nullptr
                ? places_.filtered + at * places_.sourceStride
                : spareRows_ + at % 2 * static_cast<std::ptrdiff_t>(to_.width * kChannels);
        filter_.Apply(Source(row), place);
        return place;
    }

    void WriteSums(std::uint64_t begin, std::uint64_t end, bool firstTwice,
                   std::uint8_t* target) const noexcept {
        const std::size_t bytes = to_.width * kChannels;
        std::memset(sums_, 0, bytes * sizeof *sums_);
        for (std::uint64_t row = begin; row < end; ++row) {
            const std::uint8_t* const filtered = Filtered(row);
            AddRow(filtered, bytes, sums_);
            if (firstTwice && row == begin) AddRow(filtered, bytes, sums_);
        }
        WriteMeans(sums_, bytes, end - begin + (firstTwice ? 1 : 0), target);
    }

    RowPlaces places_;
    BlockSize from_;
    BlockSize to_;
    std::uint32_t* sums_;
    std::uint8_t* spareRows_;
    RowFilter filter_;
};

bool IsTooManyForOne(BlockSize from, BlockSize to) noexcept {
    return from.width / to.width + 2 > MeanOf::kMaxCount ||
           from.height / to.height + 2 > MeanOf::kMaxCount;
}

}  // namespace

// Row for row, so that memory is read and written once and in order.

bool ShrinkPixels(std::uint8_t* pixels, BlockSize from, BlockSize to) noexcept {
    if (IsTooManyForOne(from, to)) return false;
    const WorkingMemory memory(to.width, false);
    if (!memory.IsThere()) return false;
    const auto stride = static_cast<std::ptrdiff_t>(from.width * kChannels);
    const RowShrinker shrinker({pixels, stride, pixels}, from, to, memory);
    for (std::size_t row = 0; row < to.height; ++row) {
        shrinker.WriteRow(row, pixels + row * to.width * kChannels);
    }
    return true;
}

bool ShrinkExchangingRedBlue(const std::uint8_t* firstRow, std::ptrdiff_t stride, BlockSize from,
                             BlockSize to, std::uint8_t* target) noexcept {
    if (IsTooManyForOne(from, to)) return false;
    const WorkingMemory memory(to.width, true);
    if (!memory.IsThere()) return false;
    const RowShrinker shrinker({firstRow, stride, nullptr}, from, to, memory);
    for (std::size_t row = 0; row < to.height; ++row) {
        std::uint8_t* const result = target + row * to.width * kChannels;
        shrinker.WriteRow(row, result);
        CopyExchangingRedBlue(result, to.width, result);
    }
    return true;
}
