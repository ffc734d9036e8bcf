// Feeds foreign bytes to the reader of photo index files and reads everything that comes out: the
// limits that the header promises must hold, and the folders formed from it must stay in the tree.
#include "fuzz/check.h"
#include "photos/photo_index.h"
#include "photos/photo_link.h"
#include "photos/place_name.h"

namespace {

constexpr std::size_t kMaxLine = 4095;
constexpr WideView kRoot = u"R:\\photos\\";

/// Whether `folder` is exactly `levels` real names below the root.
bool LiesBelowRoot(WideView folder, int levels) {
    if (!folder.starts_with(kRoot)) return false;
    folder.remove_prefix(kRoot.size());
    for (; levels > 0; --levels) {
        const WideView name = folder.substr(0, folder.find(u'\\'));
        if (name.size() == folder.size() || name.find_first_of(u"/:*?;") != WideView::npos ||
            name.find_first_not_of(u". ") == WideView::npos) {
            return false;
        }
        folder.remove_prefix(name.size() + 1);
    }
    return folder.find(u'\\') == WideView::npos;
}

void ReadAll(std::string_view bytes, PhotoIndexKind kind) {
    PhotoIndexReader reader(bytes, kind);
    PhotoIndexEntry entry;
    WideString path;
    while (reader.Next(entry)) {
        Check(entry.photoNumber >= 0);
        Check(entry.city.size() + entry.caption.size() + entry.pagePath.size() <= kMaxLine);
        for (const WideString* text : {&entry.city, &entry.caption, &entry.pagePath}) {
            Check(text->find_first_of(WideView(u"\t\r\n\0", 4)) == WideString::npos);
        }
        if (FormPhotoPath(kRoot, u"Country", entry.city, entry.photoNumber, path)) {
            Check(LiesBelowRoot(path, entry.city.empty() ? 1 : 2));
        }
        if (FormPhotoFolder(kRoot, entry.caption, {}, path)) Check(LiesBelowRoot(path, 1));
        const WideString link = PhotoPageLink(entry.pagePath);
        Check(link.size() <= kMaxLinkLength && link.find(u'"') == WideString::npos);
        Check(link.empty() || link.starts_with(WideString(kPhotoSite) + u'/'));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 1U << 16U) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    ReadAll(bytes, PhotoIndexKind::City);
    ReadAll(bytes, PhotoIndexKind::Country);
    return 0;
}
