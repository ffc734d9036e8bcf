#pragma once

#include <string>

/// Makes the folder "Zelmo\Horivo" below `commonFolder`, unless there is one.
/// @return the path of the folder with a backslash at its end. Empty when `commonFolder` is empty,
///         when the folder cannot be made (GetLastError returns the reason), or when the path would
///         have 260 characters or more
/// Throws std::bad_alloc.
std::wstring DataDirectoryBelow(const std::wstring& commonFolder);

/// Calls DataDirectoryBelow for CommonAppDataFolder. Throws std::bad_alloc.
std::wstring MapDataDirectory();
