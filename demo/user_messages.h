#pragma once
// What the program tells its user in message boxes.

#include <cstdint>

#include "window/host_windows.h"

/// Tells the user of a failure, in a box over `owner`.
void TellUser(HWND owner, std::uint32_t textId);
/// The text for a result code of the library.
std::uint32_t ResultTextId(std::uint32_t code);
