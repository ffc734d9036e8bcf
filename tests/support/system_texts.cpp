// Fakes of what the portable code asks the system about texts: the ANSI code page is Latin-1, with
// '?' for characters that it does not have, and the comparison knows ASCII letters only.
#include <algorithm>

#include "base/narrow_text.h"
#include "base/wide_text.h"

std::int32_t NarrowText(const HorivoWideChar* text, std::int32_t length, char* buffer,
                        std::int32_t capacity) noexcept {
    WideView view;
    if (text != nullptr) view = length < 0 ? text : WideView(text, std::size_t(length));
    view = view.substr(0, std::size_t(capacity) - 1);
    *std::transform(view.begin(), view.end(), buffer,
                    [](HorivoWideChar c) { return c <= 0xFF ? static_cast<char>(c) : '?'; }) = '\0';
    return static_cast<std::int32_t>(view.size());
}

WideString WidenAnsi(std::string_view bytes) { return WidenAscii(bytes); }

bool EqualIgnoringCase(const HorivoWideChar* a, const HorivoWideChar* b) noexcept {
    const auto same = [](HorivoWideChar x, HorivoWideChar y) {
        return x == y || ((x ^ y) == 0x20 && (x | 0x20) >= u'a' && (x | 0x20) <= u'z');
    };
    const WideView left = a;
    const WideView right = b;
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), same);
}
