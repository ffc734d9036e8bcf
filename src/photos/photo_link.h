#pragma once
// Addresses on the photo web site. The site is chosen when the library is built; nothing that an
// index file says can lead to another one.

#include <cstddef>

#include "base/wide_text.h"

// The Windows build defines the address; elsewhere no page is ever opened.
#ifndef HORIVO_PHOTO_SITE
#define HORIVO_PHOTO_SITE u"https://photos.example"
#endif

/// The photo web site, without a slash at the end.
inline constexpr const HorivoWideChar* kPhotoSite = HORIVO_PHOTO_SITE;

/// Characters of a link without its terminator; longer ones are cut.
inline constexpr std::size_t kLongestLink = 511;

/// The address of a page of the photo web site; empty for an empty path. Throws std::bad_alloc.
/// @param pagePath  as the index file gives it; a path that does not begin with '/' gets one put
///                  before it, a quotation mark is written as %22
WideString PhotoPageLink(WideView pagePath);

/// The page on which users add a photo of their own. Throws std::bad_alloc.
WideString AddPhotoLink();
