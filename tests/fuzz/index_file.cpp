// Feeds foreign bytes to the reader of photo index files and reads everything that comes out: the
// limits that the header promises must hold, and the folders formed from it must stay in the tree.
#include <algorithm>

#include "fuzz/check.h"
#include "photos/photo_index.h"
#include "photos/photo_link.h"
#include "photos/place_name.h"

namespace {

constexpr std::size_t kMaxLine = 4095;
constexpr WideView kRoot = u"R:\\photos\\";

/// `path` must be a file or folder exactly `levels` real names below the root.
void CheckBelowRoot(const WideString& path, std::ptrdiff_t levels) {
    Check(path.starts_with(kRoot) && std::count(path.begin(), path.end(), u'\\') == 2 + levels);
    for (const WideView none : {u"\\\\", u"\\.\\", u"\\..\\", u"\\ \\", u"/", u"*", u"?"})
        Check(path.find(none) == WideString::npos);
}

void ReadAll(std::string_view bytes, PhotoIndexKind kind) {
    PhotoIndexReader reader(bytes, kind);
    PhotoIndexEntry entry;
    WideString path;
    while (reader.Next(entry)) {
        Check(entry.photoNumber >= 0);
        Check(entry.city.size() + entry.caption.size() + entry.pagePath.size() <= kMaxLine);
        for (const WideString* text : {&entry.city, &entry.caption, &entry.pagePath})
            Check(text->find_first_of(WideView(u"\t\r\n\0", 4)) == WideString::npos);
        if (FormPhotoPath(kRoot, u"Country", entry.city, entry.photoNumber, path))
            CheckBelowRoot(path, entry.city.empty() ? 1 : 2);
        if (FormPhotoFolder(kRoot, entry.caption, {}, path)) CheckBelowRoot(path, 1);
        const WideString link = PhotoPageLink(entry.pagePath);
        Check(link.size() <= kMaxLinkLength && link.find(u'"') == WideString::npos);
        Check(link.empty() || link.starts_with(WideString(kPhotoSite) + u'/'));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ReadAll(bytes, PhotoIndexKind::City);
    ReadAll(bytes, PhotoIndexKind::Country);
    return 0;
}
