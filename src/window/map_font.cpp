#include "window/map_font.h"

namespace {

struct CodePageCharset {
    std::uint32_t codePage;
    std::uint8_t charset;
};

constexpr CodePageCharset kCharsets[] = {
    {932, 128},   // Japanese, Shift-JIS
    {936, 134},   // Simplified Chinese, GB2312
    {949, 129},   // Korean, Hangul
    {862, 177},   // Hebrew
    {864, 178},   // Arabic
    {950, 136},   // Traditional Chinese, Big5
    {1250, 238},  // Central and eastern Europe
    {1251, 204},  // Cyrillic
    {1252, 0},    // Western Europe
    {1253, 161},  // Greek
    {1254, 162},  // Turkish
    {1257, 186},  // Baltic
};

constexpr std::uint32_t kMaxCodePage = 65535;

}  // namespace

std::uint8_t CharsetOfCodePage(std::uint32_t codePage) noexcept {
    for (const CodePageCharset& entry : kCharsets) {
        if (entry.codePage == codePage) return entry.charset;
    }
    return 0;
}

std::uint32_t ParseCodePage(const wchar_t* text) noexcept {
    std::uint32_t number = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text) {
        number = number * 10 + static_cast<std::uint32_t>(*text - L'0');
        if (number > kMaxCodePage) return 0;
    }
    return number;
}
