#pragma once
// The DLL's worker threads: where they are, how long they take, when they have left.

#include <atomic>
#include <vector>

#include "base/handles_win.h"
#include "support/faked_import_win.h"

/// Time-out of FreeMap and InstallMap that wait for workers, ms.
inline constexpr DWORD kWorkerEndWaitMs = 300000;

/// Watches the workers of a module and holds them up where a test wants them.
class WorkerWatch {
public:
    /// Where workers are held up: before a worker's only wait for the lock, or with the lock in its
    /// hands before it opens "map.jpg".
    enum Place { kNowhere, kLoadLock, kDecode, kSplitLock };
    /// How the module's waits go that have an end: as they are; at once, whether successful or not;
    /// in vain; at once, and as if whoever had the lock had died.
    enum Waits { kPatient, kHurried, kVain, kOrphaned };

    explicit WorkerWatch(HMODULE module);
    WorkerWatch(const WorkerWatch&) = delete;
    WorkerWatch& operator=(const WorkerWatch&) = delete;
    /// Lets all go and waits for them.
    ~WorkerWatch();

    void HoldUp(int place);
    void LetGo();
    /// Whether a worker stands at the place.
    bool IsHeldUp() const { return WaitForSingleObject(heldUp_.get(), 0) == WAIT_OBJECT_0; }
    /// Workers that have not left yet.
    int Inside() const;
    /// Waits for the threads themselves; false when one stays.
    bool WaitUntilAllLeft() const;

    int started = 0;                    ///< workers that the module tried to start
    int failingStart = 0;               ///< which of the next starts fails; 1 is the next
    std::atomic<int> mostDecoding = 0;  ///< workers that ever decoded at the same time
    std::atomic<int> waits = kPatient;
    bool letGoAtWait = false;  ///< the window thread's next wait lets the held-up workers go first

private:
    using OpenPicture = FakedImport<"GdipCreateBitmapFromFile", int(const wchar_t*, void**)>;
    using Wait = FakedImport<"WaitForSingleObject", decltype(WaitForSingleObject)>;
    using Start = FakedImport<"CreateThread", decltype(CreateThread)>;

    void Pass(int place);
    int Decode(const wchar_t* path, void** bitmap);
    DWORD WaitFor(HANDLE handle, DWORD wait);

    const UniqueHandle heldUp_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    const UniqueHandle open_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<int> place_ = kNowhere;
    mutable std::vector<UniqueHandle> threads_;  ///< those that were inside when last looked at
    std::atomic<int> workerWaits_ = 0;
    std::atomic<int> decoding_ = 0;
    const DWORD windowThread_ = GetCurrentThreadId();
    OpenPicture openPicture_;
    Wait wait_;
    Start start_;
};
