#pragma once
// Opens pages of the photo web site in the user's browser. Windows handles messages meanwhile: the
// host may destroy the window or the photos may change, so a caller holds no pointer into them.

#include <cstdint>

#include "base/wide_text.h"
#include "photos/photo_set.h"

/// Opens `link`; nothing when it is empty. Taken by value: what it was copied from may change while
/// it is opened.
void OpenPhotoLink(WideString link);

/// Opens the page of the loaded photo with this number, if there is one.
void OpenPhotoPage(const PhotoSet& set, std::int32_t number);

/// Opens the page on which users add a photo of their own.
void OpenAddPhotoPage();
