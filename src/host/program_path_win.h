#pragma once

#include <string_view>

/// The host's program; folder with its trailing backslash, file name with its extension. Both are
/// empty when Windows does not say or the path is beyond 1,000 characters. The views stay valid.
struct ProgramPath {
    std::wstring_view folder;
    std::wstring_view fileName;
};

/// The same for the life of the process.
ProgramPath FindProgramPath() noexcept;
