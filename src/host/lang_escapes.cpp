#include "host/lang_escapes.h"

namespace {

constexpr std::int32_t kUnlimited = 0x10000000;  // characters; no text has so many

/// Whether `c` may be part of a menu key.
bool IsKept(HorivoWideChar c) noexcept {
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    const bool isDigit = c >= '0' && c <= '9';
    return isLetter || isDigit || c == '-' || c == '_' || c == '.';
}

}  // namespace

std::int32_t Unescape(HorivoWideChar* text, std::int32_t length) noexcept {
    const std::int32_t limit = length < 0 ? kUnlimited : length;
    std::int32_t from = 0;
    std::int32_t to = 0;
    const auto atEnd = [&] { return from >= limit || text[from] == '\0'; };
    while (!atEnd()) {
        const HorivoWideChar c = text[from++];
        // A backslash at the end of the text is kept, because no character follows it.
        if (c != '\\' || atEnd()) {
            text[to++] = c;
            continue;
        }
        const HorivoWideChar escaped = text[from++];
        switch (escaped) {
            case '\\':
                text[to++] = '\\';
                break;
            case 'n':
                text[to++] = '\n';
                break;
            case 'r':
                text[to++] = '\r';
                break;
            case 't':
                // Deliberate: "\t" becomes a tab and a backslash, and the next character is
                // dropped. So translators must use a tab character in place of this escape.
                text[to++] = '\t';
                text[to++] = '\\';
                if (!atEnd()) ++from;
                break;
            default:
                // Deliberate: any other escaped character is written twice, without the backslash.
                text[to++] = escaped;
                text[to++] = escaped;
                break;
        }
    }
    if (to < from) text[to] = '\0';
    return to;
}

void MenuKey(HorivoWideChar* text) noexcept {
    HorivoWideChar* end = text;
    for (std::int32_t i = 0; i < kMenuKeyChars && text[i] != '\0'; ++i) {
        const HorivoWideChar c = text[i] == ' ' ? HorivoWideChar{'_'} : text[i];
        if (IsKept(c)) *end++ = c;
    }
    *end = '\0';
}
