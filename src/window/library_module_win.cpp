#include "window/library_module_win.h"

// The first byte of the module that this code is linked into; the linker provides the name.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" IMAGE_DOS_HEADER __ImageBase;

HMODULE LibraryModule() noexcept { return reinterpret_cast<HMODULE>(&__ImageBase); }

HMODULE ReferenceToLibrary() noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&ReferenceToLibrary), &module);
    return module;
}
