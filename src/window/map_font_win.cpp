#include <cstddef>
#include <string_view>

#include "window/map_font.h"

namespace {

constexpr int kPointsPerInch = 72;
constexpr std::size_t kMaxFaceName = 30;  // characters of a name; LOGFONTW could hold one more
constexpr int kCodePageDigits = 10;       // characters with terminator, for a locale's code page

/// The character set of the user's language; 0 when the code page of the language is western or
/// unknown.
std::uint8_t UserCharset() noexcept {
    wchar_t digits[kCodePageDigits] = {};
    if (GetLocaleInfoW(GetUserDefaultLangID(), LOCALE_IDEFAULTANSICODEPAGE, digits,
                       kCodePageDigits) <= 0) {
        return 0;
    }
    const std::uint32_t codePage = ParseCodePage(digits);
    return IsValidCodePage(codePage) ? CharsetOfCodePage(codePage) : std::uint8_t{0};
}

/// Converts a size in points to logical units of `dc`. @param dotsPerInch  resolution of the device
/// of `dc`
POINT PointsToLogical(HDC dc, int size, int dotsPerInch) noexcept {
    const int pixels = dotsPerInch * size / kPointsPerInch;
    POINT logical = {pixels, pixels};
    DPtoLP(dc, &logical, 1);
    return logical;
}

void SetFontSize(HDC screen, int width, int height, LOGFONTW& out) noexcept {
    out.lfHeight = height;
    out.lfWidth = width;
    // A negative lfHeight is the height of the characters; a positive lfHeight is the height of
    // their cells.
    if (height > 0) {
        out.lfHeight = -PointsToLogical(screen, height, GetDeviceCaps(screen, LOGPIXELSY)).y;
    }
    if (width > 0) {
        out.lfWidth = -PointsToLogical(screen, width, GetDeviceCaps(screen, LOGPIXELSX)).x;
    }
}

void SetFontStyle(int weight, unsigned styleFlags, LOGFONTW& out) noexcept {
    const bool boldFromStyle = weight == 0 && (styleFlags & kFontBold) != 0;
    out.lfWeight = boldFromStyle ? FW_BOLD : weight;
    out.lfItalic = (styleFlags & kFontItalic) != 0;
    out.lfUnderline = (styleFlags & kFontUnderline) != 0;
    out.lfStrikeOut = (styleFlags & kFontStrikeOut) != 0;
}

}  // namespace

bool MakeLogFont(const wchar_t* faceName, int width, int height, int weight, unsigned styleFlags,
                 LOGFONTW& out) noexcept {
    out = {};
    out.lfCharSet = UserCharset();
    const WindowDc screen(nullptr);
    if (screen.Get() == nullptr) return false;
    // The code page is western or unknown: use the character set of the screen's default font.
    if (out.lfCharSet == 0) out.lfCharSet = static_cast<BYTE>(GetTextCharset(screen.Get()));
    SetFontSize(screen.Get(), width, height, out);
    SetFontStyle(weight, styleFlags, out);
    std::wstring_view(faceName).copy(out.lfFaceName, kMaxFaceName);
    return true;
}

UniqueFont CreateMapFont(const wchar_t* faceName, int width, int height, int weight,
                         unsigned styleFlags) noexcept {
    LOGFONTW logFont;
    if (!MakeLogFont(faceName, width, height, weight, styleFlags, logFont)) return nullptr;
    return UniqueFont(CreateFontIndirectW(&logFont));
}
