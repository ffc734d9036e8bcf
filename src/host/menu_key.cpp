#include "host/menu_key.h"

namespace {

bool IsKept(HorivoWideChar c) noexcept {
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    const bool isDigit = c >= '0' && c <= '9';
    return isLetter || isDigit || c == '-' || c == '_' || c == '.';
}

}  // namespace

void MenuKey(HorivoWideChar* text) noexcept {
    HorivoWideChar* end = text;
    for (std::int32_t i = 0; i < kMenuKeyChars && text[i] != '\0'; ++i) {
        const HorivoWideChar c = text[i] == ' ' ? HorivoWideChar{'_'} : text[i];
        if (IsKept(c)) *end++ = c;
    }
    *end = '\0';
}
