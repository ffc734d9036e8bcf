#include <cstring>
#include <cwchar>

#include "base/narrow_text.h"
#include "base/windows_types.h"

namespace {

constexpr int kMaxCharacterBytes = 8;  // bytes; no character of an ANSI code page needs more than 4

/// Number of UTF-16 units of the first character of `text`.
/// @param left  units in `text`, at least 1
std::int32_t UnitsOfCharacter(const wchar_t* text, std::int32_t left) noexcept {
    return left >= 2 && IS_SURROGATE_PAIR(text[0], text[1]) ? 2 : 1;
}

/// Converts as many whole characters as `room` bytes hold. @return bytes written
std::int32_t ConvertWhatFits(UINT codePage, const wchar_t* text, std::int32_t length, char* buffer,
                             std::int32_t room) noexcept {
    std::int32_t written = 0;
    while (length > 0) {
        char bytes[kMaxCharacterBytes];
        const std::int32_t units = UnitsOfCharacter(text, length);
        const int size = WideCharToMultiByte(codePage, 0, text, units, bytes, kMaxCharacterBytes,
                                             nullptr, nullptr);
        if (size <= 0 || size > room - written) break;
        std::memcpy(buffer + written, bytes, static_cast<std::size_t>(size));
        written += size;
        text += units;
        length -= units;
    }
    return written;
}

}  // namespace

std::int32_t NarrowTextIn(std::uint32_t codePage, const HorivoWideChar* text, std::int32_t length,
                          char* buffer, std::int32_t capacity) noexcept {
    const std::int32_t room = capacity - 1;
    buffer[0] = '\0';
    if (text == nullptr || room <= 0) return 0;
    if (length < 0) length = static_cast<std::int32_t>(std::wcslen(text));
    if (length == 0) return 0;
    std::int32_t written =
        WideCharToMultiByte(codePage, 0, text, length, buffer, room, nullptr, nullptr);
    // When the text does not fit, WideCharToMultiByte returns 0 and leaves the buffer undefined.
    if (written <= 0 && GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        written = ConvertWhatFits(codePage, text, length, buffer, room);
    }
    buffer[written] = '\0';
    return written;
}

std::int32_t NarrowText(const HorivoWideChar* text, std::int32_t length, char* buffer,
                        std::int32_t capacity) noexcept {
    return NarrowTextIn(CP_ACP, text, length, buffer, capacity);
}
