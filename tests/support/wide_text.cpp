// Fakes of the system's ANSI code page (Latin-1) and of its comparison of texts (ASCII only).
#include "base/wide_text.h"

namespace {

HorivoWideChar Lower(HorivoWideChar c) noexcept {
    return c >= u'A' && c <= u'Z' ? static_cast<HorivoWideChar>(c + (u'a' - u'A')) : c;
}

}  // namespace

WideString WidenAnsi(std::string_view bytes) { return WidenAscii(bytes); }

bool EqualIgnoringCase(const HorivoWideChar* a, const HorivoWideChar* b) noexcept {
    while (*a != 0 && Lower(*a) == Lower(*b)) {
        ++a;
        ++b;
    }
    return Lower(*a) == Lower(*b);
}
