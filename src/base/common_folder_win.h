#pragma once

#include <string>

/// The folder of the data that all users share, without a backslash at its end; empty when the
/// system has none. Asked until it answers, then kept for the life of the library. Window thread.
/// Throws std::bad_alloc.
std::wstring CommonAppDataFolder();
