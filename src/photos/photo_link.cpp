#include "photos/photo_link.h"

WideString PhotoPageLink(WideView pagePath) {
    if (pagePath.empty()) return {};
    WideString link(kPhotoSite);
    // Without the slash, a path "@other.example" or ".other.example" would lead to another site.
    if (pagePath.front() != '/') link.push_back('/');
    for (const HorivoWideChar c : pagePath) {
        // Windows may pass the address in quotation marks on the command line of the browser. A
        // quotation mark inside the address would end the address, and the browser would read the
        // rest as options.
        if (c == '"') {
            link.append(WidenAscii("%22"));
        } else {
            link.push_back(c);
        }
    }
    return WideString(Truncate(link, kMaxLinkLength));
}

WideString AddPhotoLink() { return kPhotoSite + WidenAscii("/add_photo.htm"); }
