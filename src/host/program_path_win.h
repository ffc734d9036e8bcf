#pragma once

#include <string_view>

/// Path of the program that runs: the folder with a trailing backslash, the file name with its
/// extension. Both are empty when Windows reports no path or a path above 1,000 characters. The
/// views stay valid until the process ends.
struct ProgramPath {
    std::wstring_view folder;
    std::wstring_view fileName;
};

/// Returns the path of the program. The first call reads it from Windows; later calls return the
/// same path.
ProgramPath FindProgramPath() noexcept;
