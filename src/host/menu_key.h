#pragma once

#include <cstdint>

#include "horivo_map.h"

/// Characters of an item's text that count for its key.
inline constexpr std::int32_t kMenuKeyChars = 256;

/// Turns the text of a menu item that opens a submenu into its key in language files, in place:
/// ASCII letters, digits, "-", "_" and "." stay, a blank becomes "_", everything else goes, the
/// ampersand of the access key too. What lies beyond kMenuKeyChars is cut off.
void MenuKey(HorivoWideChar* text) noexcept;
