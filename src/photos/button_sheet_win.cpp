#include "photos/button_sheet_win.h"

#include <memory>
#include <utility>

#include "photos/button_sheet.h"

namespace {

constexpr std::int32_t kPixelFormat32bppPargb = 0xE200B;
/// Room behind the pixels, bytes a row.
constexpr SIZE_T kReservePerRow = 8;

bool HasAlphaFormat(const Picture& picture) noexcept {
    const std::int32_t format = picture.GetPixelFormat();
    return format == kPixelFormat32bppArgb || format == kPixelFormat32bppPargb;
}

/// The picture with alpha; null when it cannot serve as the sheet.
std::unique_ptr<Picture> OpenSheet(const std::wstring& path) {
    std::unique_ptr<Picture> picture = OpenPicture(path);
    // The file's own format decides: a sheet without alpha would cover the globe with full squares.
    const bool fits = picture->IsOk() && picture->GetWidth() == kSheetWidth &&
                      picture->GetHeight() == kSheetHeight &&
                      BitsPerPixel(picture->GetPixelFormat()) == kSheetBitsPerPixel;
    if (!fits) return nullptr;
    if (HasAlphaFormat(*picture)) return picture;
    return ConvertPicture(std::move(picture), kPixelFormat32bppArgb);
}

}  // namespace

bool ButtonSheet::Load(const std::wstring& path) {
    pixels_.reset();
    const std::unique_ptr<Picture> picture = OpenSheet(path);
    if (picture == nullptr) return false;
    // A fixed block: its handle is its address.
    UniqueGlobalBlock block(GlobalAlloc(GMEM_FIXED, kSheetBytes + kSheetHeight * kReservePerRow));
    if (block == nullptr) return false;
    const PixelRows rows = picture->LockForReading();
    if (rows.firstRow == nullptr) return false;
    auto* const pixels = static_cast<std::uint8_t*>(block.get());
    CopySheetRows(rows, pixels);
    picture->Unlock();
    ExchangeRedAndBlue(pixels);
    pixels_ = std::move(block);
    return true;
}

const std::uint8_t* ButtonSheet::GetPixels() const noexcept {
    return static_cast<const std::uint8_t*>(pixels_.get());
}
