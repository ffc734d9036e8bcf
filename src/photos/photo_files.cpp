#include "photos/photo_files.h"

#include "cities/city_lookup.h"
#include "photos/place_name.h"

bool GetPhotoFolder(WideView country, WideView city, WideString& path) {
    return FormPhotoFolder(PhotoRoot(), country, city, path);
}

bool GetPhotoPath(WideView country, WideView city, std::int32_t number, WideString& path) {
    return FormPhotoPath(PhotoRoot(), country, city, number, path);
}

bool GetPhotoPath(const CityTable& cities, std::int32_t cityIndex, std::int32_t number,
                  WideString& path) {
    path.clear();
    const auto records = cities.Records();
    if (cityIndex < 0 || static_cast<std::size_t>(cityIndex) >= records.size()) return false;
    const CityRecord& city = records[static_cast<std::size_t>(cityIndex)];
    return GetPhotoPath(CountryNameOf(city), CityNameOf(city), number, path);
}
