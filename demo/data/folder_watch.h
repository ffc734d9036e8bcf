#pragma once
// Watches the folder of the photos and reports new ones.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "horivo_map.h"
#include "windows_api.h"

/// Watches a photo tree and reports each index file that lists more photos than before. It needs no
/// thread: the message loop waits for the event of the watch together with its messages.
class FolderWatch {
public:
    /// Called for each index file with new photos. `signedIndex` is that of
    /// HORIVO_MSG_PHOTOS_CHANGED: a city, or negative, the own photos of that city's country.
    using Listener = std::function<void(std::int32_t signedIndex, std::int32_t newPhotos)>;

    /// Begins to watch; does nothing when the folder does not exist.
    /// @param folder  with a backslash at its end
    /// @param cities  the table that the indices refer to; must outlive the watch
    FolderWatch(const std::wstring& folder, const std::vector<CityRecord>& cities,
                Listener listener);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// Event that is set when ReadChanges has something to read; null when nothing is watched.
    HANDLE Event() const { return isWaiting_ ? overlapped_.hEvent : nullptr; }
    /// Reads the changes that Windows has reported, calls the listener and waits for further ones.
    void ReadChanges();
    /// Reads every index file that was written since it was last read. Call it now and then: some
    /// file systems report no changes, or none in subfolders.
    void CheckAll();

private:
    struct IndexFile {
        std::wstring path;         ///< below the tree
        std::int32_t signedIndex;  ///< of its city or country
        std::int32_t photos;       ///< that it listed when it was last read
        FILETIME written;          ///< its time at that moment; 0: there was none
    };

    void ListIndexFiles();
    void AddIndexFile(const std::wstring& path, std::int32_t signedIndex);
    void RequestChanges();
    void Check(IndexFile& file);

    std::wstring folder_;
    const std::vector<CityRecord>& cities_;
    Listener listener_;
    std::vector<IndexFile> indexFiles_;
    HANDLE directory_ = INVALID_HANDLE_VALUE;
    OVERLAPPED overlapped_{};
    bool isWaiting_ = false;  ///< Windows will write to `changes_` and set the event
    alignas(DWORD) std::byte changes_[16384] = {};  ///< some hundred changes fit
};
