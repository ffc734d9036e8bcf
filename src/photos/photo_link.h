#pragma once
// Addresses on the photo web site. The site is fixed when the library is built; no content of an
// index file can lead to another site.

#include <cstddef>

#include "base/wide_text.h"

// The Windows build defines the address. The native build, which opens no page, uses the address
// below.
#ifndef HORIVO_PHOTO_SITE
#define HORIVO_PHOTO_SITE u"https://photos.example"
#endif

/// The photo web site, without a slash at the end.
inline constexpr const HorivoWideChar* kPhotoSite = HORIVO_PHOTO_SITE;

/// Longer links are cut to this many characters, the terminator not included.
inline constexpr std::size_t kMaxLinkLength = 511;

/// Returns the address of a page of the photo web site, or an empty text for an empty path. Throws
/// std::bad_alloc.
/// @param pagePath  the path from the index file. A '/' is added in front if there is none, and a
///                  quotation mark becomes %22
WideString PhotoPageLink(WideView pagePath);

/// Returns the address of the page on which users add a photo of their own. Throws std::bad_alloc.
WideString AddPhotoLink();
