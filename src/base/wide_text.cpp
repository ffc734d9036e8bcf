#include "base/wide_text.h"

#include <cstdint>
#include <utility>

namespace {

constexpr std::uint32_t kFirstBeyond16Bits = 0x10000;
constexpr std::uint32_t kLastCodePoint = 0x10FFFF;
constexpr std::uint32_t kFirstSurrogate = 0xD800;
constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;
constexpr std::uint32_t kLastSurrogate = 0xDFFF;

/// The UTF-8 form of characters with `bytes` bytes: the fixed bits of the first byte (`lead`, under
/// `mask`) and the smallest code point that may have this form.
struct Utf8Form {
    std::uint32_t mask, lead, smallest;
    std::size_t bytes;
};
constexpr std::uint32_t kContinuationMask = 0xC0;  // a continuation byte is 10xxxxxx
constexpr std::uint32_t kContinuationLead = 0x80;
constexpr std::uint32_t kContinuationBits = 6;
constexpr std::uint32_t kContinuationValue = 0x3F;
constexpr std::uint32_t kSurrogateBits = 10;
constexpr std::uint32_t kSurrogateValue = 0x3FF;
constexpr Utf8Form kUtf8Forms[] = {
    {0x80, 0x00, 0x0, 1},
    {0xE0, 0xC0, 0x80, 2},
    {0xF0, 0xE0, 0x800, 3},
    {0xF8, 0xF0, kFirstBeyond16Bits, 4},
};

/// Reads the first character of `bytes` and removes that character from `bytes`. @return false when
/// the character is not valid UTF-8
bool TakeCodePoint(std::string_view& bytes, std::uint32_t& codePoint) noexcept {
    const std::uint32_t first = static_cast<unsigned char>(bytes.front());
    for (const Utf8Form& form : kUtf8Forms) {
        if ((first & form.mask) != form.lead) continue;
        if (bytes.size() < form.bytes) return false;
        codePoint = first & ~form.mask;
        for (std::size_t i = 1; i < form.bytes; ++i) {
            const std::uint32_t next = static_cast<unsigned char>(bytes[i]);
            if ((next & kContinuationMask) != kContinuationLead) return false;
            codePoint = codePoint << kContinuationBits | (next & kContinuationValue);
        }
        bytes.remove_prefix(form.bytes);
        const bool surrogate = codePoint >= kFirstSurrogate && codePoint <= kLastSurrogate;
        return codePoint >= form.smallest && codePoint <= kLastCodePoint && !surrogate;
    }
    return false;
}

void AppendCodePoint(WideString& text, std::uint32_t codePoint) {
    if (codePoint < kFirstBeyond16Bits) {
        text.push_back(static_cast<HorivoWideChar>(codePoint));
        return;
    }
    const std::uint32_t offset = codePoint - kFirstBeyond16Bits;
    text.push_back(static_cast<HorivoWideChar>(kFirstSurrogate + (offset >> kSurrogateBits)));
    text.push_back(static_cast<HorivoWideChar>(kFirstLowSurrogate + (offset & kSurrogateValue)));
}

}  // namespace

WideString WidenAscii(std::string_view text) {
    WideString wide;
    wide.reserve(text.size());
    for (const char c : text) {
        wide.push_back(static_cast<HorivoWideChar>(static_cast<unsigned char>(c)));
    }
    return wide;
}

std::wstring ToWstring(WideView text) { return {text.begin(), text.end()}; }

WideView Truncate(WideView text, std::size_t maxUnits) noexcept {
    if (text.size() <= maxUnits) return text;
    const std::uint32_t dropped = maxUnits > 0 ? text[maxUnits] : 0;
    const bool halved = dropped >= kFirstLowSurrogate && dropped <= kLastSurrogate;
    return text.substr(0, halved ? maxUnits - 1 : maxUnits);
}

bool WidenUtf8(std::string_view bytes, WideString& text) {
    WideString wide;
    wide.reserve(bytes.size());
    while (!bytes.empty()) {
        std::uint32_t codePoint = 0;
        if (!TakeCodePoint(bytes, codePoint)) return false;
        AppendCodePoint(wide, codePoint);
    }
    text = std::move(wide);
    return true;
}
