#include "photos/photo_page_win.h"

#include "base/windows_types.h"
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include "photos/photo_link.h"

// NOLINTNEXTLINE(performance-unnecessary-value-param): a copy outlives what it was made from.
void OpenPhotoLink(WideString link) {
    // An empty file name would open the current folder.
    if (link.empty()) return;
    ShellExecuteW(nullptr, L"open", link.c_str(), nullptr, L".\\", SW_SHOWNORMAL);
}

void OpenPhotoPage(const PhotoSet& set, std::int32_t number) {
    const auto found = set.byNumber.find(number);
    if (found != set.byNumber.end()) OpenPhotoLink(found->second->link);
}

void OpenAddPhotoPage() { OpenPhotoLink(AddPhotoLink()); }
