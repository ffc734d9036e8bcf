#include "data/photo_tree.h"

#include <cstddef>
#include <cstdlib>
#include <string_view>

#include "data/data_folder.h"

namespace {

// Characters that a folder name must not have: the host removes them from the name of a place, and
// so does the map.
constexpr std::wstring_view kDropped = L"*/:;?\\\x7F";
constexpr wchar_t kFirstPrintable = L' ';
constexpr wchar_t kIndexName[] = L"index.tsv";

/// The name of the folder of a city or country; empty when the place cannot have a folder.
std::wstring FolderName(std::wstring_view place) {
    std::wstring name;
    for (const wchar_t character : place) {
        const bool drop =
            character < kFirstPrintable || kDropped.find(character) != std::wstring_view::npos;
        if (!drop) name += character;
    }
    // A name of only dots and spaces, such as "..", could lead to a folder outside the tree.
    return name.find_first_not_of(L". ") == std::wstring::npos ? std::wstring() : name;
}

}  // namespace

std::wstring CountryIndexPath(const CityRecord& city) {
    const std::wstring country = FolderName(city.countryName);
    return country.empty() ? std::wstring() : country + L'\\' + kIndexName;
}

std::wstring CityIndexPath(const CityRecord& city) {
    const std::wstring country = FolderName(city.countryName);
    const std::wstring name = FolderName(city.cityName);
    if (country.empty() || name.empty()) return {};
    return country + L'\\' + name + L'\\' + kIndexName;
}

std::int32_t CountPhotos(const std::wstring& path) {
    const std::string index = ReadWholeFile(path);
    std::int32_t photos = 0;
    for (std::size_t start = 0; start < index.size();) {
        // Counts every line as a photo, except comments and empty lines.
        if (std::string_view("#;\r\n").find(index[start]) == std::string_view::npos) ++photos;
        const std::size_t end = index.find('\n', start);
        if (end == std::string::npos) break;
        start = end + 1;
    }
    return photos;
}

bool MayShowPhotos(const std::vector<CityRecord>& cities, std::int32_t signedIndex) {
    const auto index = static_cast<std::size_t>(std::llabs(signedIndex));
    if (index >= cities.size()) return false;
    const CityRecord& city = cities[index];
    const std::wstring path = signedIndex < 0 ? CountryIndexPath(city) : CityIndexPath(city);
    return !path.empty() && CountPhotos(PhotoFolder() + path) > 0;
}
