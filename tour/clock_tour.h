#pragma once
// The tour of the whole program: list, menus, dialogs and several languages.

#include <string>

#include "host_app.h"

/// Sends the first window of `app` the messages that a user would cause, and writes PNG files of
/// the screen. Prints each failure.
/// @param folder  must exist; without a backslash at its end
/// @return whether every part succeeded
bool TakeClockTour(HostApp& app, const std::wstring& folder);
