#include "window/shared_picture_win.h"

#include <utility>

void MakeSceneMutex(SharedPicture& shared) noexcept {
    if (!shared.sceneMutex) shared.sceneMutex = std::move(shared.orphanedMutex);
    if (!shared.sceneMutex) shared.sceneMutex.reset(CreateMutexW(nullptr, FALSE, nullptr));
}

void ReleasePicture(SharedPicture& shared) noexcept {
    // A host that frees twice: the worker of the first time may still be at it.
    const HANDLE mutex = shared.sceneMutex ? shared.sceneMutex.get() : shared.orphanedMutex.get();
    const MutexHold hold = AcquireMutex(mutex, kWorkerEndWaitMs);
    // From here on a worker that was started before leaves the picture alone.
    ++shared.generation;
    // Without a mutex no worker can have run; on a time-out one still does and nothing is released.
    if (!hold && mutex != nullptr) {
        if (shared.sceneMutex) shared.orphanedMutex = DuplicateOf(mutex);
        return;
    }
    shared.picture.ClearMap();
    shared.picture.ClearTiles(false);
}

bool CloseSceneMutex(SharedPicture& shared) noexcept {
    return CloseHandle(shared.sceneMutex.release()) != FALSE;
}

void AbandonPicture(SharedPicture& shared) noexcept {
    shared.picture.ClearMap();
    shared.picture.ClearTiles(true);
    shared.sceneMutex.reset();
    shared.orphanedMutex.reset();
}
