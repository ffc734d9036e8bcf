#include "photos/photo_link.h"

WideString PhotoPageLink(WideView pagePath) {
    if (pagePath.empty()) return {};
    WideString link(kPhotoSite);
    // Without the slash, "@other.example" or ".other.example" would name another site.
    if (pagePath.front() != '/') link.push_back('/');
    for (const HorivoWideChar c : pagePath) {
        // The browser's command line holds the address in quotation marks: one inside would end it
        // and turn the rest into options.
        if (c == '"') {
            link.append(WidenAscii("%22"));
        } else {
            link.push_back(c);
        }
    }
    return WideString(Truncate(link, kLongestLink));
}

WideString AddPhotoLink() { return kPhotoSite + WidenAscii("/add_photo.htm"); }
