#pragma once

#include <cstddef>
#include <cwchar>
#include <string_view>

#include "horivo_host.h"

/// This module's language record, for the functions that change it.
CLangFile& MutableLangFile() noexcept;

/// Copies `text` into `field` and terminates it. A text above `maxChars` characters is truncated
/// after a whole character. `text` may be part of `field`.
void StoreText(HorivoWideChar* field, std::wstring_view text, std::size_t maxChars) noexcept;

/// `text` as a view; empty for null.
inline std::wstring_view ViewOf(const HorivoWideChar* text) noexcept {
    return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}

/// A number as a key of a language file.
struct NumberKey {
    // characters; a 32-bit number with its terminator needs at most 12
    static constexpr std::size_t kCapacity = 16;
    explicit NumberKey(std::int32_t number) noexcept {
        std::swprintf(text, kCapacity, L"%d", number);
    }
    wchar_t text[kCapacity];
};
