// Fake of the system's ANSI code page: Latin-1, with '?' for characters that it does not have.
#include "base/narrow_text.h"

#include <algorithm>

std::int32_t NarrowText(const HorivoWideChar* text, std::int32_t length, char* buffer,
                        std::int32_t capacity) noexcept {
    std::int32_t count = 0;
    if (text != nullptr && length < 0) {
        while (text[count] != 0) ++count;
    } else if (text != nullptr) {
        count = length;
    }
    count = std::min(count, capacity - 1);
    for (std::int32_t i = 0; i < count; ++i) {
        buffer[i] = text[i] <= 0xFF ? static_cast<char>(text[i]) : '?';
    }
    buffer[count] = '\0';
    return count;
}
