#include "base/common_folder_win.h"

#include "base/windows_types.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

// Plain characters: the guard of a static with a constructor keeps handles and memory of MinGW's
// thread library for good, anew with each time that the DLL is loaded and unloaded.
wchar_t knownFolder[MAX_PATH] = {};

bool QueryCommonAppData(wchar_t (&folder)[MAX_PATH]) noexcept {
    return SUCCEEDED(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA | CSIDL_FLAG_CREATE, nullptr,
                                      SHGFP_TYPE_CURRENT, folder));
}

}  // namespace

std::wstring CommonAppDataFolder() {
    // An answer that failed for want of memory is no answer to keep.
    if (knownFolder[0] == L'\0' && !QueryCommonAppData(knownFolder)) knownFolder[0] = L'\0';
    return knownFolder;
}
