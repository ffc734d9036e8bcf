#include "data/folder_watch.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include "data/photo_tree.h"

namespace {

constexpr DWORD kWatchedChanges =
    FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_LAST_WRITE | FILE_NOTIFY_CHANGE_SIZE;

bool SamePath(std::wstring_view a, std::wstring_view b) {
    return CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) == CSTR_EQUAL;
}

/// The time at which a file was last written; 0 when there is no such file.
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
    // Asks Windows to report changes before the index files are read, so that no change during the
    // reading is missed.
    RequestChanges();
    ListIndexFiles();
}

FolderWatch::~FolderWatch() {
    if (isWaiting_) {
        CancelIo(directory_);
        DWORD size = 0;
        // Waits until the request has ended, because Windows may write to `changes_` until then.
        GetOverlappedResult(directory_, &overlapped_, &size, TRUE);
    }
    if (overlapped_.hEvent != nullptr) CloseHandle(overlapped_.hEvent);
    if (directory_ != INVALID_HANDLE_VALUE) CloseHandle(directory_);
}

void FolderWatch::ListIndexFiles() {
    std::vector<std::wstring> countries;
    for (std::size_t i = 0; i < cities_.size(); ++i) {
        const auto index = static_cast<std::int32_t>(i);
        const std::wstring country = CountryIndexPath(cities_[i]);
        const std::wstring city = CityIndexPath(cities_[i]);
        if (!city.empty()) AddIndexFile(city, index);
        // The negated index of the first city of a country stands for the country. Index 0 has no
        // negative, so the next city of the same country stands for the country of city 0.
        const bool isNew =
            std::find(countries.begin(), countries.end(), country) == countries.end();
        if (country.empty() || index == 0 || !isNew) continue;
        countries.push_back(country);
        AddIndexFile(country, -index);
    }
}

void FolderWatch::AddIndexFile(const std::wstring& path, std::int32_t signedIndex) {
    const FILETIME written = WrittenAt(folder_ + path);
    indexFiles_.push_back({path, signedIndex, CountPhotos(folder_ + path), written});
}

void FolderWatch::RequestChanges() {
    ResetEvent(overlapped_.hEvent);
    isWaiting_ = ReadDirectoryChangesW(directory_, changes_, sizeof changes_, TRUE, kWatchedChanges,
                                       nullptr, &overlapped_, nullptr) != FALSE;
}

void FolderWatch::Check(IndexFile& file) {
    file.written = WrittenAt(folder_ + file.path);
    const std::int32_t photos = CountPhotos(folder_ + file.path);
    const std::int32_t before = std::exchange(file.photos, photos);
    if (photos > before) listener_(file.signedIndex, photos - before);
}

void FolderWatch::CheckAll() {
    for (IndexFile& file : indexFiles_) {
        const FILETIME written = WrittenAt(folder_ + file.path);
        if (CompareFileTime(&written, &file.written) != 0) Check(file);
    }
}

void FolderWatch::ReadChanges() {
    DWORD size = 0;
    if (!isWaiting_ || !GetOverlappedResult(directory_, &overlapped_, &size, FALSE)) return;
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
    RequestChanges();
    // When there were more changes than the buffer can hold, Windows reports none of them.
    if (paths.empty()) CheckAll();
    for (IndexFile& file : indexFiles_) {
        if (std::any_of(paths.begin(), paths.end(),
                        [&](const std::wstring& path) { return SamePath(path, file.path); })) {
            Check(file);
        }
    }
}
