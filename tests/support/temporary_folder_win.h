#pragma once

#include <filesystem>
#include <string>

#include "base/windows_types.h"

/// A folder that is removed at the end. Its name has letters that no single code page has.
struct TemporaryFolder {
    TemporaryFolder() { std::filesystem::create_directories(path); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                       (L"Größe-Жук-東-" + std::to_wstring(GetCurrentProcessId()));
};
