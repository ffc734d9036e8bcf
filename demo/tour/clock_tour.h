#pragma once
// A tour of the whole program: list, menus and dialogs in several languages.

#include <string>
#include <vector>

#include "host_app.h"
#include "window/host_window.h"

/// Uses the program with real messages and writes PNG files of what the screen shows.
/// @param folder  exists; without a backslash at its end
/// @return an account of each picture or promise that failed; empty when all was right
std::vector<std::wstring> TakeClockTour(HostApp& app, HostWindow& window,
                                        const std::wstring& folder);
