#pragma once

#include <string_view>

/// Path of the program that runs: the folder with a trailing backslash, the file name with its
/// extension. Both are empty when Windows gives no path or one above 1,000 characters. The views
/// stay valid until the process ends.
struct ProgramPath {
    std::wstring_view folder;
    std::wstring_view fileName;
};

/// The path is read once; every call gives the same.
ProgramPath FindProgramPath() noexcept;
