// Feeds texts of any shape to the escapes and the menu keys of language files. Each lies in a block
// of exactly its size, so that the sanitizer sees a step over either end.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "fuzz/check.h"
#include "host/lang_escapes.h"

namespace {

void CheckMenuKey(std::vector<HorivoWideChar> text) {
    text.push_back('\0');
    MenuKey(text.data());
    const auto end = std::find(text.begin(), text.end(), HorivoWideChar{'\0'});
    Check(end != text.end() && end - text.begin() <= kMenuKeyChars);
    for (auto c = text.begin(); c != end; ++c) {
        Check(*c < 0x80 && std::strchr(" &=;[]\t\r\n", static_cast<char>(*c)) == nullptr);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > 1U << 16U) return 0;
    std::vector<HorivoWideChar> text((size - 1) / 2 + (size - 1) % 2);
    // Half of the inputs are mostly ASCII, where the escapes are.
    const bool narrow = data[0] % 2 == 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<HorivoWideChar>(data[1 + i] | (narrow ? 0 : data[size - 1 - i] << 8));
    }
    CheckMenuKey(text);

    std::vector<HorivoWideChar> terminated = text;
    terminated.push_back('\0');
    const auto length = static_cast<std::int32_t>(text.size());
    const std::int32_t byLength = Unescape(text.data(), length);
    const std::int32_t toTheEnd = Unescape(terminated.data(), -1);
    Check(byLength >= 0 && byLength <= length);
    Check(byLength == toTheEnd);
    Check(byLength == length || text[static_cast<std::size_t>(byLength)] == '\0');
    Check(terminated[static_cast<std::size_t>(toTheEnd)] == '\0');
    Check(std::equal(text.begin(), text.begin() + byLength, terminated.begin()));
    return 0;
}
