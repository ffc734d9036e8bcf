#include "base/common_folder_win.h"

#include "base/windows_types.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

std::wstring QueryCommonAppData() {
    wchar_t path[MAX_PATH] = {};
    const HRESULT result =
        SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path);
    return SUCCEEDED(result) ? std::wstring(path) : std::wstring();
}

}  // namespace

const std::wstring& CommonAppDataFolder() {
    static const std::wstring folder = QueryCommonAppData();
    return folder;
}
