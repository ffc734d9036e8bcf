#include "photos/button_sheet.h"

#include <cstring>
#include <utility>

namespace {

constexpr std::size_t kBytesPerPixel = kSheetBitsPerPixel / 8;
constexpr std::size_t kRowBytes = kSheetWidth * kBytesPerPixel;

}  // namespace

void CopySheetRows(const PixelRows& rows, std::uint8_t* out) noexcept {
    const std::uint8_t* from = rows.firstRow;
    for (std::int32_t row = kSheetHeight - 1; row >= 0; --row, from += rows.stride) {
        std::memcpy(out + static_cast<std::size_t>(row) * kRowBytes, from, kRowBytes);
    }
}

void ExchangeRedAndBlue(std::uint8_t* pixels) noexcept {
    for (std::size_t i = 0; i < kSheetBytes; i += kBytesPerPixel) {
        std::swap(pixels[i], pixels[i + 2]);
    }
}
