#pragma once
// Watches the folder of the photos and reports new photos.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "horivo_map.h"
#include "windows_api.h"

/// Watches a photo tree and reports each index file that lists more photos than before. The watch
/// needs no thread: the message loop waits for Event together with its messages, and then calls
/// ReadChanges.
class FolderWatch {
public:
    /// Called for each index file with new photos. `signedIndex` is the wParam of
    /// HORIVO_MSG_PHOTOS_CHANGED: the index of a city for photos of that city, or a negated index
    /// for photos of that city's country.
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
    /// Reads the changes that Windows has reported, calls the listener, and asks Windows to report
    /// further changes.
    void ReadChanges();
    /// Reads every index file that was written since it was last read. Call this function from time
    /// to time, because some file systems report no changes, or none in subfolders.
    void CheckAll();

private:
    struct IndexFile {
        std::wstring path;         ///< relative to the photo tree
        std::int32_t signedIndex;  ///< argument for the listener
        std::int32_t photos;       ///< photos that the file listed when it was last read
        FILETIME written;          ///< last-write time of the content that was read; 0: no file
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
    bool isWaiting_ = false;  ///< whether Windows has been asked to report changes
    alignas(DWORD) std::byte changes_[16384] = {};  ///< Windows writes the changes here
};
