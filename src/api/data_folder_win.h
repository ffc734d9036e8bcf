#pragma once

#include <string>

/// "Zelmo\Horivo" below `commonFolder`, made when missing, with a backslash at its end. Empty when
/// `commonFolder` is, when the folder cannot be made (GetLastError says why) or when its path
/// reaches 260 characters. Throws std::bad_alloc.
std::wstring DataDirectoryBelow(const std::wstring& commonFolder);

/// The map's own folder below CommonAppDataFolder. Throws std::bad_alloc.
std::wstring MapDataDirectory();
