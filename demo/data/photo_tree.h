#pragma once
// The index files of the photo tree. The host only counts the photos that they list; the library
// reads and shows the photos.

#include <cstdint>
#include <string>
#include <vector>

#include "horivo_map.h"

/// Path of the index file of a city, and of the index file of its country's own photos, relative to
/// the photo tree. Empty when a name cannot be the name of a folder.
std::wstring CityIndexPath(const CityRecord& city);
std::wstring CountryIndexPath(const CityRecord& city);

/// The number of photos that an index file lists; 0 when there is no such file.
/// @param path  full path of the index file
std::int32_t CountPhotos(const std::wstring& path);

/// The answer to HORIVO_MSG_MAY_SHOW_PHOTOS.
/// @param signedIndex  wParam of the message: the index of a city, or a negated index for that
///                     city's country
/// @return whether the index file of that city or country lists a photo; false for an index outside
///         the table
bool MayShowPhotos(const std::vector<CityRecord>& cities, std::int32_t signedIndex);
