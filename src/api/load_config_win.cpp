// Defines the load configuration: a record in the DLL with settings for the loader of Windows.
// MinGW's linker does not know this record, so tools/set_load_config.py writes the address of the
// record into the headers of the linked file.

#include <cstddef>

#include "base/windows_types.h"

namespace {

// Newer headers call these two bytes DependentLoadFlags.
static_assert(offsetof(IMAGE_LOAD_CONFIG_DIRECTORY64, Reserved1) == 78);

constexpr IMAGE_LOAD_CONFIG_DIRECTORY64 MakeLoadConfig() {
    IMAGE_LOAD_CONFIG_DIRECTORY64 config = {};
    config.Size = sizeof config;
    // The DLL is linked to libraries of Windows only. The loader must not search for them beside
    // the host's program, where somebody may have put a file of the same name.
    config.Reserved1 = LOAD_LIBRARY_SEARCH_SYSTEM32;
    return config;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): linkers and set_load_config.py look for this name.
extern "C" const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used;
extern "C" const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used = MakeLoadConfig();
