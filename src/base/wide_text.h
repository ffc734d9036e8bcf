#pragma once
// UTF-16 text: the encoding of Windows and of hosts.

#include <cstddef>
#include <string>
#include <string_view>

#include "horivo_map.h"

using WideString = std::basic_string<HorivoWideChar>;
using WideView = std::basic_string_view<HorivoWideChar>;

/// Converts ASCII to UTF-16. A byte that is not ASCII becomes the character whose code is the value
/// of the byte. Throws std::bad_alloc.
WideString WidenAscii(std::string_view text);

/// Copies `text` into a std::wstring, whose characters are wider than 16 bits on some systems.
/// Throws std::bad_alloc.
std::wstring ToWstring(WideView text);

/// The first `maxUnits` UTF-16 units of `text`; one unit fewer when the last unit would be half of
/// a surrogate pair.
WideView Truncate(WideView text, std::size_t maxUnits) noexcept;

/// Converts well-formed UTF-8 (no overlong forms, no surrogates) to UTF-16. For any other bytes
/// returns false and does not change `text`. Throws std::bad_alloc.
bool WidenUtf8(std::string_view bytes, WideString& text);

/// Converts text from the system's ANSI code page to UTF-16; empty when Windows cannot convert it.
/// Throws std::bad_alloc.
WideString WidenAnsi(std::string_view bytes);

/// Whether two NUL-terminated texts are equal when case is ignored, by the rules of the user's
/// language.
bool EqualIgnoringCase(const HorivoWideChar* a, const HorivoWideChar* b) noexcept;
