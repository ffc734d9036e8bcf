#include "image/resample.h"

#include <cstring>
#include <memory>
#include <new>

#include "image/pixel_block.h"
#include "image/red_blue.h"
#include "image/row_filter.h"
#include "image/row_means.h"

namespace {

// Largest number of bytes in a sum for which a reciprocal of 32 bits gives the exact mean:
// 255 * 4096 * 4096 < 2^32.
constexpr std::size_t kMaxNarrowCount = 4096;
constexpr unsigned kNarrowShift = 32;

void AddRow(const std::uint8_t* row, std::size_t bytes, std::uint32_t* sums) noexcept {
    for (std::size_t i = 0; i < bytes; ++i) sums[i] += row[i];
}

void WriteMeans(const std::uint32_t* sums, std::size_t bytes, std::size_t count,
                std::uint8_t* target) noexcept {
    if (count > 1 && count <= kMaxNarrowCount) {
        // Like MeanOf, but with 2^32 in place of 2^56: the compiler can then vectorise the loop.
        const auto reciprocal = static_cast<std::uint32_t>((1ULL << kNarrowShift) / count + 1);
        for (std::size_t i = 0; i < bytes; ++i) {
            target[i] =
                static_cast<std::uint8_t>((std::uint64_t{sums[i]} * reciprocal) >> kNarrowShift);
        }
        return;
    }
    const MeanOf mean(count);
    for (std::size_t i = 0; i < bytes; ++i) target[i] = mean(sums[i]);
}

/// The place of the source rows, and the place for the filtered rows (shrunk to the new width).
struct RowPlaces {
    const std::uint8_t* source;
    std::ptrdiff_t sourceStride;
    /// Place of the first filtered row; the rows have the stride of the source. Null: two spare
    /// rows are used in turn.
    std::uint8_t* filtered;
};

/// Memory that is needed while a block is shrunk.
class WorkingMemory {
public:
    /// @param spareRows  also allocate memory for two filtered rows
    WorkingMemory(std::size_t width, bool spareRows) noexcept
        : bytes_(width * kRgbBytes),
          spareNumbers_(spareRows ? (2 * bytes_ + sizeof(std::uint32_t) - 1) / sizeof(std::uint32_t)
                                  : 0),
          block_(new (std::nothrow) std::uint32_t[bytes_ + width + 1 + spareNumbers_]) {}

    bool IsAllocated() const noexcept { return block_ != nullptr; }
    /// A sum for each byte of a new row.
    std::uint32_t* Sums() const noexcept { return block_.get() + spareNumbers_; }
    /// The first source byte of each new column, and one entry more for the end.
    std::uint32_t* Starts() const noexcept { return Sums() + bytes_; }
    std::uint8_t* SpareRows() const noexcept {
        return reinterpret_cast<std::uint8_t*>(block_.get());
    }

private:
    std::size_t bytes_;
    std::size_t spareNumbers_;
    std::unique_ptr<std::uint32_t[]> block_;
};

/// Computes the new rows. WriteRow must be called for all rows in order: when a block is shrunk in
/// place, a new row overwrites source rows, and these must not be needed for a later row.
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
            MeanOfRows(first, Filtered(begin + 1), to_.width * kRgbBytes, target);
        }
    }

private:
    const std::uint8_t* Source(std::uint64_t row) const noexcept {
        return places_.source + static_cast<std::ptrdiff_t>(row) * places_.sourceStride;
    }

    /// Shrinks a source row to the new width; the means are truncated to bytes. The result is valid
    /// until the second call after this one.
    const std::uint8_t* Filtered(std::uint64_t row) const noexcept {
        const auto at = static_cast<std::ptrdiff_t>(row);
        std::uint8_t* const place =
            places_.filtered != nullptr
                ? places_.filtered + at * places_.sourceStride
                : spareRows_ + at % 2 * static_cast<std::ptrdiff_t>(to_.width * kRgbBytes);
        filter_.Apply(Source(row), place);
        return place;
    }

    void WriteSums(std::uint64_t begin, std::uint64_t end, bool firstTwice,
                   std::uint8_t* target) const noexcept {
        const std::size_t bytes = to_.width * kRgbBytes;
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

/// Whether a new pixel would be the mean of more old pixels than MeanOf can divide exactly.
bool NeedsTooManySources(BlockSize from, BlockSize to) noexcept {
    return from.width / to.width + 2 > MeanOf::kMaxCount ||
           from.height / to.height + 2 > MeanOf::kMaxCount;
}

}  // namespace

// Both functions below shrink row by row, so that memory is read and written once and in order.

bool ShrinkPixels(std::uint8_t* pixels, BlockSize from, BlockSize to) noexcept {
    if (NeedsTooManySources(from, to)) return false;
    const WorkingMemory memory(to.width, false);
    if (!memory.IsAllocated()) return false;
    const auto stride = static_cast<std::ptrdiff_t>(from.width * kRgbBytes);
    const RowShrinker shrinker({pixels, stride, pixels}, from, to, memory);
    for (std::size_t row = 0; row < to.height; ++row) {
        shrinker.WriteRow(row, pixels + row * to.width * kRgbBytes);
    }
    return true;
}

bool ShrinkExchangingRedBlue(const std::uint8_t* firstRow, std::ptrdiff_t stride, BlockSize from,
                             BlockSize to, std::uint8_t* target) noexcept {
    if (NeedsTooManySources(from, to)) return false;
    const WorkingMemory memory(to.width, true);
    if (!memory.IsAllocated()) return false;
    const RowShrinker shrinker({firstRow, stride, nullptr}, from, to, memory);
    for (std::size_t row = 0; row < to.height; ++row) {
        std::uint8_t* const result = target + row * to.width * kRgbBytes;
        shrinker.WriteRow(row, result);
        CopyExchangingRedBlue(result, to.width, result);
    }
    return true;
}
