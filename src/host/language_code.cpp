#include "host/language_code.h"

#include <string_view>

namespace {

/// First two letters of a Windows abbreviation, then the code in file names.
constexpr std::string_view kCodePairs[] = {"in id", "mr mi", "ml mt", "ts tn", "sm se", "mo mn",
                                           "jp ja", "di dv", "ma mr", "ka kn", "my ml"};
constexpr std::size_t kCodeChars = 2;

}  // namespace

HorivoWideChar LowerAscii(HorivoWideChar c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<HorivoWideChar>(c - 'A' + 'a') : c;
}

WideString LanguageFileCode(WideView abbrev) {
    if (abbrev.size() < kCodeChars) return {};
    const WideString prefix = {LowerAscii(abbrev[0]), LowerAscii(abbrev[1])};
    for (const std::string_view pair : kCodePairs) {
        if (prefix == WidenAscii(pair.substr(0, kCodeChars))) {
            return WidenAscii(pair.substr(kCodeChars + 1));
        }
    }
    return prefix;
}
