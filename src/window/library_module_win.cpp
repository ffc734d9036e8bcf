#include "window/library_module_win.h"

namespace {

HMODULE ModuleOfThisCode(DWORD flags) noexcept {
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | flags,
                       reinterpret_cast<LPCWSTR>(&LibraryModule), &module);
    return module;
}

}  // namespace

HMODULE LibraryModule() noexcept {
    return ModuleOfThisCode(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
}

HMODULE ReferenceToLibrary() noexcept { return ModuleOfThisCode(0); }
