#include "support/photo_tree.h"

#include "photos/photo_files.h"
#include "support/memory_picture.h"

void PhotoTree::AddPhoto(WideView path, std::int32_t width, std::int32_t height) {
    const WideString full = root + WideString(path);
    photos[full] = {width, height};
    Files().pictures[ToWstring(full)] = NoiseImage(width, height);
}

void PhotoTree::AddIndex(WideView path, std::string_view bytes) {
    indexes[root + WideString(path)] = bytes;
}

void PhotoTree::Reset() {
    *this = {};
    Files() = {};
}

PhotoTree& Tree() {
    static PhotoTree tree;
    return tree;
}

CityRecord MakeCity(WideView city, WideView country, double latitude, double longitude) {
    CityRecord record = {};
    city.copy(record.cityName, 63);
    country.copy(record.countryName, 63);
    record.latitude = latitude;
    record.longitude = longitude;
    return record;
}

WideString PhotoRoot() { return Tree().root; }

bool PhotoFileExists(const WideString& path) noexcept {
    Tree().touched.push_back(path);
    return Tree().photos.contains(path);
}

bool ReadPhotoIndex(const WideString& path, std::string& bytes) {
    Tree().touched.push_back(path);
    const auto found = Tree().indexes.find(path);
    if (found == Tree().indexes.end()) return false;
    bytes = found->second;
    return true;
}

bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept {
    Tree().touched.push_back(path);
    const auto found = Tree().photos.find(path);
    if (found == Tree().photos.end()) return false;
    width = found->second.width;
    height = found->second.height;
    return true;
}
