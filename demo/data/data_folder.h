#pragma once
// Files and folders that the sample host reads and writes.

#include <string>

/// Result of PrepareMapPicture.
enum class MapPicture {
    Present,  ///< there was one already; it is unchanged
    Copied,   ///< this call copied it; InstallMap should check it
    Failed,   ///< there is none and it could not be copied; the globe will have no surface
};

/// The folder of this program, with a backslash at its end.
std::wstring ProgramFolder();

/// All bytes of a file; empty when it cannot be opened.
std::string ReadWholeFile(const std::wstring& path);

/// Copies `source` to "<common application data>\Zelmo\Horivo\map.jpg", where the library reads its
/// map picture, unless there is one.
MapPicture PrepareMapPicture(const std::wstring& source);

/// The folder of the photos that the library shows, "<common application data>\Zelmo\City Photos\".
std::wstring PhotoFolder();
