#include "photos/photo_web_page_win.h"

#include "base/windows_types.h"
// shellapi.h must come after windows.h.
#include <shellapi.h>

#include "photos/photo_link.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): see the header.
void OpenPhotoLink(WideString link) {
    // For an empty name ShellExecuteW would open the current folder.
    if (link.empty()) return;
    ShellExecuteW(nullptr, L"open", link.c_str(), nullptr, L".\\", SW_SHOWNORMAL);
}

void OpenPhotoPage(const PhotoSet& set, std::int32_t number) {
    const auto found = set.byNumber.find(number);
    if (found != set.byNumber.end()) OpenPhotoLink(found->second->link);
}

void OpenAddPhotoPage() { OpenPhotoLink(AddPhotoLink()); }
