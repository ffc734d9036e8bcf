#pragma once
// The photo tree as a host sees it: what it may offer the user. The library reads the photos.

#include <cstdint>
#include <string>
#include <vector>

#include "horivo_map.h"

/// Path below the photo tree of the index file of a city, or of its country's own photos; empty
/// when its name forms no folder.
std::wstring IndexOfCity(const CityRecord& city);
std::wstring IndexOfCountry(const CityRecord& city);

/// Lines of an index file that list a photo; 0 when there is no such file.
/// @param path  whole path
std::int32_t CountPhotos(const std::wstring& path);

/// Answers HORIVO_MSG_MAY_SHOW_PHOTOS.
/// @param signedIndex  as it came with the message: a city, or, negative, the city that lies
///                     nearest to a place of its country
/// @return whether an index file of that city, or of that country, lists a photo; false for a city
///         that is not in the table
bool MayShowPhotos(const std::vector<CityRecord>& cities, std::int32_t signedIndex);
