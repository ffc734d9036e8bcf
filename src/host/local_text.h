#pragma once
// The rules of texts in language files: their escapes, and the keys of submenus.

#include <cstdint>

#include "horivo_map.h"

/// Resolves the escapes of a text of a language file in place: "\\" a backslash, "\n" a line feed,
/// "\r" a carriage return; the two oddities stand in the source.
/// @param length  characters to read at most; below 0: to the terminator
/// @return the new length, never above the old one. The result is terminated wherever it is shorter
///         than what was read.
std::int32_t Unescape(HorivoWideChar* text, std::int32_t length) noexcept;

/// Characters of an item's text that count for its key.
inline constexpr std::int32_t kMenuKeyChars = 256;

/// Turns the text of a menu item that opens a submenu into its key in language files, in place:
/// ASCII letters, digits, "-", "_" and "." stay, a blank becomes "_", everything else goes, the
/// ampersand of the access key too. What lies beyond kMenuKeyChars is cut off.
void MenuKey(HorivoWideChar* text) noexcept;
