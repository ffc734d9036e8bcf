#include "photos/button_file_win.h"

#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "image/picture.h"
#include "photos/map_buttons.h"

namespace {

constexpr wchar_t kFileName[] = L"buttons.png";
constexpr DWORD kPathCapacity = 32768;  // characters with terminator; longest path of Windows

constexpr std::int32_t kSheetBitsPerPixel = 32;
constexpr std::size_t kSheetBytesPerPixel = kSheetBitsPerPixel / 8;
constexpr std::size_t kRowBytes = kSheetWidth * kSheetBytesPerPixel;
constexpr std::size_t kSheetBytes = kSheetHeight * kRowBytes;

constexpr std::int32_t kPixelFormat32bppPargb = 0xE200B;
/// For each row of the sheet, this many unused bytes are allocated behind the last row.
constexpr SIZE_T kReservePerRow = 8;

/// Returns the bits per pixel of a GDI+ pixel format, which stores this number in its bits 8 to 15.
constexpr std::int32_t BitsPerPixel(std::int32_t pixelFormat) noexcept {
    return (pixelFormat >> 8) & 0xFF;
}

bool HasAlphaFormat(const Picture& picture) noexcept {
    const std::int32_t format = picture.GetPixelFormat();
    return format == kPixelFormat32bppArgb || format == kPixelFormat32bppPargb;
}

/// Opens the picture and converts it to a format with an alpha channel, if necessary. Returns null
/// when the picture cannot be used as the button sheet.
std::unique_ptr<Picture> OpenSheet(const std::wstring& path) {
    std::unique_ptr<Picture> picture = OpenPicture(path);
    // Refuse a file that does not store 32 bits per pixel: a PNG file of 24 bits has no alpha
    // channel, and its buttons would be opaque squares over the globe.
    const bool fits = picture->IsOk() && picture->GetWidth() == kSheetWidth &&
                      picture->GetHeight() == kSheetHeight &&
                      BitsPerPixel(picture->GetPixelFormat()) == kSheetBitsPerPixel;
    if (!fits) return nullptr;
    if (HasAlphaFormat(*picture)) return picture;
    return ConvertPicture(std::move(picture), kPixelFormat32bppArgb);
}

/// Copies the rows in reverse order: the top row becomes the last one.
void CopySheetRows(const PixelRows& rows, std::uint8_t* out) noexcept {
    const std::uint8_t* from = rows.firstRow;
    for (std::int32_t row = kSheetHeight - 1; row >= 0; --row, from += rows.stride) {
        std::memcpy(out + static_cast<std::size_t>(row) * kRowBytes, from, kRowBytes);
    }
}

/// Changes the order of the channels from B, G, R, A to R, G, B, A.
void ExchangeRedAndBlue(std::uint8_t* pixels) noexcept {
    for (std::size_t i = 0; i < kSheetBytes; i += kSheetBytesPerPixel) {
        std::swap(pixels[i], pixels[i + 2]);
    }
}

/// Whether `path` begins with a drive or a server. Any other path depends on the current directory.
bool IsFullPath(std::wstring_view path) noexcept {
    return path.starts_with(L"\\\\") || (path.size() > 2 && path.substr(1, 2) == L":\\");
}

/// Returns the folder of the host's executable with a backslash at its end, or an empty text when
/// GetModuleFileNameW fails.
std::wstring ExecutableFolder() {
    std::wstring path(kPathCapacity, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), kPathCapacity));
    return path.substr(0, path.rfind(L'\\') + 1);
}

}  // namespace

bool ButtonSheet::Load(const std::wstring& path) {
    pixels_.reset();
    const std::unique_ptr<Picture> picture = OpenSheet(path);
    if (picture == nullptr) return false;
    // With GMEM_FIXED, the handle of the block is the address of its memory.
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

bool ButtonSheet::LoadFor(const std::wstring& hostDirectory) {
    const std::wstring path = hostDirectory + kFileName;
    if (IsFullPath(path) && GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES) {
        return Load(path);
    }
    // Use the folder of the executable instead. Reason: when the command line has no quotes around
    // the program, the folder in `hostDirectory` may be wrong or relative.
    const std::wstring folder = ExecutableFolder();
    return !folder.empty() && Load(folder + kFileName);
}
