#pragma once
// The tour of the whole program: list, menus, dialogs and several languages.

#include <string>

#include "host_app.h"

/// Uses the first window of `app` with the messages of a user, and writes PNG files of what the
/// screen shows. What fails is printed.
/// @param folder  exists; without a backslash at its end
/// @return whether all was right
bool TakeClockTour(HostApp& app, const std::wstring& folder);
