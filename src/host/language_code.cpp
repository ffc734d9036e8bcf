#include "host/language_code.h"

namespace {

struct CodePair {
    unsigned char abbrev[3];  ///< first two letters of a Windows abbreviation
    unsigned char file[3];    ///< the code in file names
};

/// The languages whose code in file names is not the first two letters of their abbreviation.
constexpr CodePair kCodePairs[] = {
    {"in", "id"}, {"mr", "mi"}, {"ml", "mt"}, {"ts", "tn"}, {"sm", "se"}, {"mo", "mn"},
    {"jp", "ja"}, {"di", "dv"}, {"ma", "mr"}, {"ka", "kn"}, {"my", "ml"},
};

}  // namespace

HorivoWideChar LowerAscii(HorivoWideChar c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<HorivoWideChar>(c - 'A' + 'a') : c;
}

LanguageCode LanguageFileCode(const HorivoWideChar* abbrev) noexcept {
    if (abbrev[0] == '\0' || abbrev[1] == '\0') return {};
    const LanguageCode prefix = {LowerAscii(abbrev[0]), LowerAscii(abbrev[1]), '\0'};
    for (const CodePair& pair : kCodePairs) {
        if (prefix[0] == pair.abbrev[0] && prefix[1] == pair.abbrev[1]) {
            return {pair.file[0], pair.file[1], '\0'};
        }
    }
    return prefix;
}
