#pragma once
// Rules of language files: escapes in texts, and keys of submenus.

#include <cstdint>

#include "horivo_map.h"

/// Resolves the escapes of a text of a language file in place: "\\" gives a backslash, "\n" a line
/// feed, "\r" a carriage return. "\t" gives a tab and a backslash and removes the next character;
/// any other escaped character is written twice.
/// @param length  characters to read at most; below 0: all up to the terminator
/// @return the new length, never above the old one. A terminator is written only when the result is
///         shorter than the text that was read.
std::int32_t Unescape(HorivoWideChar* text, std::int32_t length) noexcept;

/// Number of characters of a menu item's text that MenuKey reads.
inline constexpr std::int32_t kMenuKeyChars = 256;

/// Converts the text of a menu item that opens a submenu into its key in language files, in place:
/// keeps ASCII letters, digits, "-", "_" and ".", replaces each space by "_" and removes everything
/// else, also the "&" of the access key. Characters after the first kMenuKeyChars are dropped.
void MenuKey(HorivoWideChar* text) noexcept;
