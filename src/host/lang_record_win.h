#pragma once

#include <cstddef>
#include <cwchar>
#include <string_view>

#include "horivo_host.h"

/// This module's language record, for the operations that change it.
CLangFile& MutableLangFile() noexcept;

/// Copies at most `longest` characters of `text`, cut at a whole character, and a terminator.
/// `text` may lie in the field itself.
void StoreText(HorivoWideChar* field, std::wstring_view text, std::size_t longest) noexcept;

/// `text` as a view; empty for null.
inline std::wstring_view ViewOf(const HorivoWideChar* text) noexcept {
    return text != nullptr ? std::wstring_view(text) : std::wstring_view();
}
