#pragma once
// Files and folders of the sample host.

#include <string>

/// What became of the map picture.
enum class MapPicture {
    WasThere,  ///< an earlier start or the user put one there: untouched
    NewlyPut,  ///< this start put it there; the library should check it
    CouldNot,  ///< neither there nor put there; the map will show a globe without surface
};

/// The folder of this program with a backslash at its end.
std::wstring ProgramFolder();

/// A whole file as bytes; empty when it cannot be read.
std::string ReadWholeFile(const std::wstring& path);

/// Sees to it that the library finds a "map.jpg" in its data folder
/// "<common application data>\Zelmo\Horivo\"; copies `source` there when there is none.
MapPicture PrepareMapPicture(const std::wstring& source);

/// The photo tree that the library reads, "<common application data>\Zelmo\City Photos\".
std::wstring PhotoFolder();
