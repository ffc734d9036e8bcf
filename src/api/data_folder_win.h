#pragma once

#include <string>

/// Makes the folder "Zelmo\Horivo" below `commonFolder`, unless there is one.
/// @return its path with a backslash at the end; empty when `commonFolder` is empty, when the
/// folder
///         cannot be made (GetLastError says why) or when its path reaches 260 characters
/// Throws std::bad_alloc.
std::wstring DataDirectoryBelow(const std::wstring& commonFolder);

/// Does the same below CommonAppDataFolder. Throws std::bad_alloc.
std::wstring MapDataDirectory();
