#include "base/common_folder_win.h"

#include "base/windows_types.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

// Not a static of the function: the guard of one keeps handles and memory of MinGW's thread library
// for good, anew with each time that the DLL is loaded and unloaded.
constinit std::wstring knownFolder;

std::wstring QueryCommonAppData() {
    wchar_t path[MAX_PATH] = {};
    const HRESULT result =
        SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path);
    return SUCCEEDED(result) ? std::wstring(path) : std::wstring();
}

}  // namespace

const std::wstring& CommonAppDataFolder() {
    // An answer that failed for want of memory is no answer to keep.
    if (knownFolder.empty()) knownFolder = QueryCommonAppData();
    return knownFolder;
}
