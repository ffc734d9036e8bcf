#include "render/font_characters_win.h"

namespace {

constexpr unsigned kFirstForeignCode = 128;
constexpr unsigned kDegreeSign = 0xB0;

bool IsSingleByte(UINT codePage) noexcept {
    CPINFO info;
    return GetCPInfo(codePage, &info) && info.MaxCharSize == 1;
}

}  // namespace

wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept {
    const auto sameNumber = static_cast<wchar_t>(code);
    if (code < kFirstForeignCode || code >= kGlyphCount || code == kDegreeSign ||
        !IsSingleByte(codePage)) {
        return sameNumber;
    }
    const char byte = static_cast<char>(code);
    wchar_t character = 0;
    const int converted =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1);
    return converted == 1 ? character : sameNumber;
}
