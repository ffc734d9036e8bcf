#include "data/folder_watch.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "data/photo_tree.h"

namespace {

constexpr DWORD kWhat =
    FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_SIZE;

bool SamePath(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

/// When a file was last written; 0 when there is none.
FILETIME WrittenAt(const std::wstring& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
    return data.ftLastWriteTime;
}

}  // namespace

FolderWatch::FolderWatch(const std::wstring& folder, const std::vector<CityRecord>& cities,
                         Listener listener)
    : folder_(folder), cities_(cities), listener_(std::move(listener)) {
    directory_ = CreateFileW(
        folder.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED, nullptr);
    if (directory_ == INVALID_HANDLE_VALUE) return;
    overlapped_.hEvent = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (overlapped_.hEvent == nullptr) return;
    // Asked first: what changes while the tree is read must not be missed.
    Ask();
    ListPlaces();
}

FolderWatch::~FolderWatch() {
    if (asked_) {
        CancelIo(directory_);
        DWORD size = 0;
        // The buffer must stay until Windows has let go of it.
        GetOverlappedResult(directory_, &overlapped_, &size, TRUE);
    }
    if (overlapped_.hEvent != nullptr) CloseHandle(overlapped_.hEvent);
    if (directory_ != INVALID_HANDLE_VALUE) CloseHandle(directory_);
}

void FolderWatch::ListPlaces() {
    std::vector<std::wstring> countries;
    for (std::size_t i = 0; i < cities_.size(); ++i) {
        const auto index = static_cast<std::int32_t>(i);
        const std::wstring country = IndexOfCountry(cities_[i]);
        const std::wstring city = IndexOfCity(cities_[i]);
        if (!city.empty()) AddPlace(city, index);
        // Index 0 has no negative: a country whose first city it is goes by its next one.
        const bool isNew =
            std::find(countries.begin(), countries.end(), country) == countries.end();
        if (country.empty() || index == 0 || !isNew) continue;
        countries.push_back(country);
        AddPlace(country, -index);
    }
}

void FolderWatch::AddPlace(const std::wstring& index, std::int32_t signedIndex) {
    const FILETIME written = WrittenAt(folder_ + index);
    places_.push_back({index, signedIndex, CountPhotos(folder_ + index), written});
}

void FolderWatch::Ask() {
    ResetEvent(overlapped_.hEvent);
    asked_ = ReadDirectoryChangesW(directory_, changes_, sizeof changes_, TRUE, kWhat, nullptr,
                                   &overlapped_, nullptr) != FALSE;
}

void FolderWatch::LookAt(Place& place) {
    place.written = WrittenAt(folder_ + place.index);
    const std::int32_t photos = CountPhotos(folder_ + place.index);
    const std::int32_t before = std::exchange(place.photos, photos);
    if (photos > before) listener_(place.signedIndex, photos - before);
}

void FolderWatch::LookAgain() {
    for (Place& place : places_) {
        const FILETIME written = WrittenAt(folder_ + place.index);
        if (CompareFileTime(&written, &place.written) != 0) LookAt(place);
    }
}

void FolderWatch::Collect() {
    DWORD size = 0;
    if (!asked_ || !GetOverlappedResult(directory_, &overlapped_, &size, FALSE)) return;
    std::vector<std::wstring> paths;
    for (DWORD at = 0; size > 0;) {
        FILE_NOTIFY_INFORMATION change{};
        std::memcpy(&change, changes_ + at, offsetof(FILE_NOTIFY_INFORMATION, FileName));
        const auto* name = reinterpret_cast<const wchar_t*>(
            changes_ + at + offsetof(FILE_NOTIFY_INFORMATION, FileName));
        paths.emplace_back(name, change.FileNameLength / sizeof(wchar_t));
        if (change.NextEntryOffset == 0) break;
        at += change.NextEntryOffset;
    }
    Ask();
    // Nothing in the buffer: there was too much for it.
    if (paths.empty()) LookAgain();
    for (Place& place : places_) {
        if (std::any_of(paths.begin(), paths.end(),
                        [&](const std::wstring& path) { return SamePath(path, place.index); })) {
            LookAt(place);
        }
    }
}
