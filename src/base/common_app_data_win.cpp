#include "base/common_app_data_win.h"

#include "base/windows_types.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

// The path is in a plain array, because a static object in a function needs an initialisation
// guard, and the guard of MinGW's thread library leaks handles and memory each time the DLL is
// loaded and unloaded.
wchar_t knownFolder[MAX_PATH] = {};

bool QueryCommonAppData(wchar_t (&folder)[MAX_PATH]) noexcept {
    return SUCCEEDED(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                      SHGFP_TYPE_CURRENT, folder));
}

}  // namespace

std::wstring CommonAppDataFolder() {
    // After a failure the array stays empty, so that the next call asks Windows again.
    if (knownFolder[0] == L'\0' && !QueryCommonAppData(knownFolder)) knownFolder[0] = L'\0';
    return knownFolder;
}
