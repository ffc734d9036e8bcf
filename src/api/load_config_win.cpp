// What the loader of Windows is told about this DLL. The linker of MinGW knows nothing of it:
// tools/set_load_config.py enters the record below into the headers of the built file.

#include <cstddef>

#include "base/windows_types.h"

namespace {

// The two bytes that newer headers call DependentLoadFlags.
static_assert(offsetof(IMAGE_LOAD_CONFIG_DIRECTORY64, Reserved1) == 78);

constexpr IMAGE_LOAD_CONFIG_DIRECTORY64 MakeLoadConfig() {
    IMAGE_LOAD_CONFIG_DIRECTORY64 config = {};
    config.Size = sizeof config;
    // What the DLL is linked to is Windows' own and is not looked for beside the host's program,
    // where somebody else may have put a file of that name.
    config.Reserved1 = LOAD_LIBRARY_SEARCH_SYSTEM32;
    return config;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that linkers look for.
extern "C" const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used;
extern "C" const IMAGE_LOAD_CONFIG_DIRECTORY64 _load_config_used = MakeLoadConfig();
