#pragma once
// Tells when photos of a city have been added.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "horivo_map.h"
#include "window/host_windows.h"

/// Watches the photo tree for index files that list more photos than before. It needs no thread:
/// the message loop waits for its event beside the messages.
class FolderWatch {
public:
    /// Told of each city with new photos: the signed index as HORIVO_MSG_PHOTOS_CHANGED wants it
    /// (negative: its country's own photos) and how many there are.
    using Listener = std::function<void(std::int32_t signedIndex, std::int32_t newPhotos)>;

    /// @param folder  the tree, with a backslash at its end; watched only if it exists
    /// @param cities  the table that indices refer to; must outlive the watch
    FolderWatch(const std::wstring& folder, const std::vector<CityRecord>& cities,
                Listener listener);
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// Set while Collect has something to do; null when nothing is watched.
    HANDLE Event() const { return asked_ ? overlapped_.hEvent : nullptr; }
    /// Tells the listener of what has changed, and goes on watching.
    void Collect();
    /// Looks at every index file that has been written since the last look. To be called now and
    /// then: some file systems tell of nothing, or of nothing below the folder itself.
    void LookAgain();

private:
    struct Place {
        std::wstring index;        ///< path below the tree of its index file
        std::int32_t signedIndex;  ///< city or country
        std::int32_t photos;       ///< listed when last read
        FILETIME written;          ///< then
    };

    void ListPlaces();
    void Ask();
    void LookAt(Place& place);
    void AddPlace(const std::wstring& index, std::int32_t signedIndex);

    std::wstring folder_;
    const std::vector<CityRecord>& cities_;
    Listener listener_;
    std::vector<Place> places_;
    HANDLE directory_ = INVALID_HANDLE_VALUE;
    OVERLAPPED overlapped_{};
    bool asked_ = false;
    alignas(DWORD) std::byte changes_[16384] = {};  ///< room for some hundred of them at once
};
