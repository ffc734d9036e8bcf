#pragma once
// Files and folders that the sample host reads and writes. Folders have a backslash at their end.

#include <string>

/// The folder of this program.
std::wstring ProgramFolder();
/// The library's data folder, "<common application data>\Zelmo\Horivo\", which InitMap creates.
std::wstring MapFolder();
/// The folder of the photos that the library shows, "<common application data>\Zelmo\City Photos\".
std::wstring PhotoFolder();

/// All bytes of a file; empty when it cannot be opened.
std::string ReadWholeFile(const std::wstring& path);
/// The text of a file in UTF-8, without a byte-order mark; empty when it cannot be opened.
std::wstring ReadTextFile(const std::wstring& path);

/// Creates the folder of the photos when it is missing, and copies the sample photos from the
/// folder of the program into it.
void PreparePhotoFolder();
