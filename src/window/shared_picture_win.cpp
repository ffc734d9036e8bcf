#include "window/shared_picture_win.h"

#include <algorithm>
#include <utility>

void SharedPicture::MakeMutex() noexcept {
    if (!sceneMutex_) sceneMutex_ = std::move(orphanedMutex_);
    if (!sceneMutex_) sceneMutex_.reset(CreateMutexW(nullptr, FALSE, nullptr));
}

void SharedPicture::Release() noexcept {
    // Without a scene mutex, wait for the orphaned mutex: after a time-out in an earlier FreeMap,
    // the worker may still write to the picture while the host calls FreeMap again.
    const HANDLE mutex = sceneMutex_ ? sceneMutex_.get() : orphanedMutex_.get();
    const MutexHold hold = AcquireMutex(mutex, kWorkerEndWaitMs);
    ++generation_;
    // Without a mutex no worker can be running. With a mutex, a time-out means that a worker still
    // uses the picture: free nothing.
    if (!hold && mutex != nullptr) {
        if (sceneMutex_) orphanedMutex_ = DuplicateOf(mutex);
        return;
    }
    Clear();
}

bool SharedPicture::CloseMutex() noexcept { return CloseHandle(sceneMutex_.release()) != FALSE; }

void SharedPicture::Abandon() noexcept {
    picture.ClearMap();
    picture.ClearTiles(true);
    sceneMutex_.reset();
    orphanedMutex_.reset();
}

void SharedPicture::Clear() noexcept {
    picture.ClearMap();
    picture.ClearTiles(false);
}

void SharedPicture::UseWholeTextureLimit() noexcept {
    limits.textureLimit = limits.maxTextureSize.load();
}

void SharedPicture::SetTextureLimit(std::int32_t size) noexcept {
    limits.maxTextureSize = std::min(size, sizeCap_);
}

void SharedPicture::SetScalers(const MapSettings& settings) noexcept {
    limits.texScalerX = settings.texScalerX;
    limits.texScalerY = settings.texScalerY;
}

void SharedPicture::HalveLimit() noexcept {
    picture.ClearMap();
    picture.ClearTiles(true);
    sizeCap_ = limits.maxTextureSize / 2;
    limits.maxTextureSize = sizeCap_;
}

bool SharedPicture::TakeTilesWait() noexcept { return std::exchange(tilesWait_, false); }
