#pragma once

#include <string>

/// The folder of the data that all users share, without a backslash at its end; empty when the
/// system has none. Asked once and kept for the life of the library. Throws std::bad_alloc.
const std::wstring& CommonAppDataFolder();
