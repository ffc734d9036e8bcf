#pragma once
// Opens pages of the photo web site in the user's browser. Windows handles messages while a page is
// opened: the host may destroy the window and the photos may change. A caller must therefore keep
// no pointer to a photo across these calls.

#include <cstdint>

#include "base/wide_text.h"
#include "photos/photo_set.h"

/// Opens `link`, unless it is empty. The link is a copy, because the photo that it comes from may
/// be deleted while the page is opened.
void OpenPhotoLink(WideString link);

/// Opens the page of the photo with this number, if the set has loaded such a photo.
void OpenPhotoPage(const PhotoSet& set, std::int32_t number);

/// Opens the page on which users add a photo of their own.
void OpenAddPhotoPage();
