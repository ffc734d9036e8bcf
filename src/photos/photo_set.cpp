#include "photos/photo_set.h"

#include <algorithm>
#include <span>
#include <utility>

#include "cities/city_lookup.h"
#include "photos/photo_files.h"
#include "photos/photo_index.h"
#include "photos/photo_link.h"
#include "photos/photo_order.h"
#include "photos/place_name.h"

namespace {

// Maximum lengths, characters; longer texts are cut.
constexpr std::size_t kMaxNameLength = 63;
constexpr std::size_t kMaxCaptionLength = 99;

constexpr std::uint8_t kOpaque = 255;

/// Finds the cities of an index in the table. Looks up each name once, because the lines of an
/// index repeat a few names and the table may hold more than 100,000 records.
class CityFinder {
public:
    CityFinder(const CityTable& cities, WideView country) : cities_(cities), country_(country) {}
    std::int32_t Find(const WideString& city) {
        const auto known = found_.find(city);
        if (known != found_.end()) return known->second;
        return found_.emplace(city, FindCity(cities_, country_, city)).first->second;
    }

private:
    const CityTable& cities_;
    WideString country_;
    std::map<WideString, std::int32_t> found_;
};

/// Makes `country` and `city` the place of the set. When the place changes, the set begins at its
/// first photo again.
void MoveTo(PhotoSet& set, WideView country, WideView city) {
    WideString newCountry(Truncate(country, kMaxNameLength));
    WideString newCity(Truncate(city, kMaxNameLength));
    if (newCity != set.city || newCountry != set.country) {
        set.firstShown = 0;
        set.brokenFrom = kNoneBroken;
        set.ranks.clear();
    }
    set.country = std::move(newCountry);
    set.city = std::move(newCity);
}

/// Appends the photos of the index, in the order of the index. Leaves out photos that do not exist
/// on disk and photos of cities that are not in the table.
void ReadPhotos(PhotoSet& set, const CityTable& cities, std::string_view bytes, WideView country,
                const WideString& city) {
    const bool ofCountry = city.empty();
    CityFinder finder(cities, country);
    // Read at most this many lines: for each line a file is looked up on the disk, and during this
    // time the window handles no input.
    constexpr int kMaxLines = 20000;
    PhotoIndexReader reader(bytes, ofCountry ? PhotoIndexKind::Country : PhotoIndexKind::City);
    PhotoIndexEntry entry;
    WideString path;
    for (int line = 0; line < kMaxLines && reader.Next(entry); ++line) {
        const WideString& photoCity = ofCountry ? entry.city : city;
        if (!GetPhotoPath(country, photoCity, entry.photoNumber, path)) continue;
        if (!PhotoFileExists(path)) continue;
        const std::int32_t cityIndex = finder.Find(photoCity);
        if (cityIndex < 0) continue;
        auto record = std::make_unique<PhotoRecord>();
        record->cityIndex = cityIndex;
        record->photoNumber = entry.photoNumber;
        record->caption = Truncate(entry.caption, kMaxCaptionLength);
        record->link = PhotoPageLink(entry.pagePath);
        set.photos.push_back(std::move(record));
    }
}

/// Whether the photo is too large according to the header of its file. Such a photo need not be
/// decoded.
bool IsTooLarge(const WideString& path) noexcept {
    std::int32_t width = 0;
    std::int32_t height = 0;
    return ReadPhotoSize(path, width, height) && !IsThumbnailSize(width, height);
}

void SortPhotos(PhotoSet& set, const CityTable& cities) {
    const std::span<const CityRecord> records = cities.Records();
    // Make all keys before the sort: try_emplace may throw, and the sort must not be interrupted.
    for (const auto& photo : set.photos) {
        const CityRecord& city = records[static_cast<std::size_t>(photo->cityIndex)];
        const auto key = MakePhotoOrderKey(city, photo->cityIndex, photo->photoNumber);
        photo->order = set.ranks.try_emplace(photo->cityIndex, key).first->second;
        photo->order.photoNumber = photo->photoNumber;
    }
    std::stable_sort(set.photos.begin(), set.photos.end(), [](const auto& a, const auto& b) {
        return IsShownBefore(a->order, b->order);
    });
}

}  // namespace

bool PhotoRecord::LoadThumbnail(const std::wstring& path) {
    if (thumbnail.LoadFromFile(path, kThumbnailMaxWidth, kThumbnailMaxHeight) == kLoadFailed) {
        return false;
    }
    if (thumbnail.ConvertToRgba(kOpaque)) return true;
    thumbnail.Clear(true);
    return false;
}

void DeletePhotos(PhotoSet& set) noexcept {
    set.byNumber.clear();
    set.loaded.clear();
    set.photos.clear();
}

std::int32_t LoadPhotoSet(PhotoSet& set, const CityTable& cities, WideView country, WideView city) {
    DeletePhotos(set);
    WideString path;
    if (!GetPhotoFolder(country, city, path)) {
        set.city.clear();
        set.country.clear();
        return -1;
    }
    // Copy the names: a caller may pass the strings of the set, which MoveTo replaces.
    const WideString ofCountry(country);
    const WideString ofCity(city);
    MoveTo(set, ofCountry, ofCity);
    std::string bytes;
    if (!AppendFileName(path, WidenAscii("index.tsv")) || !ReadPhotoIndex(path, bytes)) return 0;
    ReadPhotos(set, cities, bytes, ofCountry, ofCity);
    SortPhotos(set, cities);
    return LoadThumbnails(set, cities);
}

std::int32_t LoadThumbnails(PhotoSet& set, const CityTable& cities) {
    for (PhotoRecord* record : set.loaded) record->thumbnail.Clear(false);
    set.loaded.clear();
    set.byNumber.clear();
    WideString path;
    auto next = static_cast<std::size_t>(std::max(set.firstShown, 0));
    for (; next < set.photos.size() && set.loaded.size() < kMaxThumbnails; ++next) {
        PhotoRecord& record = *set.photos[next];
        if (!GetPhotoPath(cities, record.cityIndex, record.photoNumber, path)) continue;
        if (IsTooLarge(path) || !record.LoadThumbnail(ToWstring(path))) continue;
        set.loaded.push_back(&record);
        // Two cities may have photos with the same number: emplace keeps the first photo.
        set.byNumber.emplace(record.photoNumber, &record);
    }
    return static_cast<std::int32_t>(set.loaded.size());
}
