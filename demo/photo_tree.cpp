#include "photo_tree.h"

#include <cstddef>
#include <cstdlib>
#include <string>
#include <string_view>

#include "data_folder.h"

namespace {

constexpr std::wstring_view kForbidden = L"*/:;?\\\x7F";  // left out of folder names, as by the map
constexpr wchar_t kFirstPrintable = L' ';

std::wstring FolderName(std::wstring_view place) {
    std::wstring name;
    for (const wchar_t character : place) {
        const bool dropped =
            character < kFirstPrintable || kForbidden.find(character) != std::wstring_view::npos;
        if (!dropped) name += character;
    }
    // Names of dots and blanks lead out of the tree.
    return name.find_first_not_of(L". ") == std::wstring::npos ? std::wstring() : name;
}

/// Whether any line is more than a remark.
bool ListsPhoto(std::string_view index) {
    std::size_t start = 0;
    while (start < index.size()) {
        if (std::string_view("#;\r\n").find(index[start]) == std::string_view::npos) return true;
        const std::size_t end = index.find('\n', start);
        if (end == std::string_view::npos) return false;
        start = end + 1;
    }
    return false;
}

}  // namespace

bool MayShowPhotos(const std::vector<CityRecord>& cities, std::int32_t signedIndex) {
    const auto index = static_cast<std::size_t>(std::llabs(signedIndex));
    if (index >= cities.size()) return false;
    const CityRecord& city = cities[index];
    const std::wstring country = FolderName(city.countryName);
    const std::wstring name = signedIndex < 0 ? std::wstring() : FolderName(city.cityName);
    if (country.empty() || (signedIndex >= 0 && name.empty())) return false;
    std::wstring folder = PhotoFolder() + country + L'\\';
    if (!name.empty()) folder += name + L'\\';
    return ListsPhoto(ReadWholeFile(folder + L"index.tsv"));
}
