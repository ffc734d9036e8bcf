#pragma once

#include <string>

/// The common application data folder, without a backslash at its end; empty when Windows reports
/// an error. The first path that Windows returns is kept until the library is unloaded. Window
/// thread. Throws std::bad_alloc.
std::wstring CommonAppDataFolder();
