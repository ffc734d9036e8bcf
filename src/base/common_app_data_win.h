#pragma once

#include <string>

/// The common application data folder, without a backslash at its end; empty when Windows does not
/// give one. The first success is kept until the library is unloaded. Window thread. Throws
/// std::bad_alloc.
std::wstring CommonAppDataFolder();
