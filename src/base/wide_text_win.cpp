#include "base/wide_text.h"
#include "base/windows_types.h"

WideString WidenAnsi(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    const int length =
        size > 0 ? MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0) : 0;
    if (length <= 0) return {};
    WideString wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, wide.data(), length);
    return wide;
}

bool EqualIgnoringCase(const HorivoWideChar* a, const HorivoWideChar* b) noexcept {
    return lstrcmpiW(a, b) == 0;
}
