#pragma once
// UTF-16 text, as hosts and Windows write it.

#include <cstddef>
#include <string>
#include <string_view>

#include "horivo_map.h"

using WideString = std::basic_string<HorivoWideChar>;
using WideView = std::basic_string_view<HorivoWideChar>;

/// ASCII as wide text; other bytes become the character of their value. Throws std::bad_alloc.
WideString WidenAscii(std::string_view text);

/// The same text as std::wstring, which is wider than UTF-16 on some systems. Throws
/// std::bad_alloc.
std::wstring ToWstring(WideView text);

/// The first `longest` units of `text`; one fewer where the cut would halve a character.
WideView CutText(WideView text, std::size_t longest) noexcept;

/// Reads well-formed UTF-8 (no overlong forms, no surrogates). @return false, with `text`
/// unchanged, for any other bytes. Throws std::bad_alloc.
bool WidenUtf8(std::string_view bytes, WideString& text);

/// Reads text in the system's ANSI code page; empty when that fails. Throws std::bad_alloc.
WideString WidenAnsi(std::string_view bytes);

/// Whether two terminated texts differ at most in upper and lower case, by the user's language.
bool EqualIgnoringCase(const HorivoWideChar* a, const HorivoWideChar* b) noexcept;
