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
    /// Where a worker can be held up.
    enum class At {
        Nowhere,
        LoadLock,   ///< the first worker, about to wait for the lock
        Decode,     ///< about to open "map.jpg", the lock in its hands
        SplitLock,  ///< the second worker, about to wait for the lock
    };

    explicit WorkerWatch(HMODULE module);
    WorkerWatch(const WorkerWatch&) = delete;
    WorkerWatch& operator=(const WorkerWatch&) = delete;
    /// Lets all go and waits for them.
    ~WorkerWatch();

    void HoldUp(At place);
    void LetGo();
    /// Whether a worker stands at the place.
    bool IsHeldUp() const { return WaitForSingleObject(heldUp_.get(), 0) == WAIT_OBJECT_0; }
    bool HaveAllLeft() const { return Inside() == 0; }
    /// Workers that have not left yet.
    int Inside() const;
    /// Waits for the threads themselves; false when one stays.
    bool WaitUntilAllLeft() const;

    /// How many the module tried to start.
    int Started() const { return starts_; }
    /// The start of this number fails; 1 is the next.
    void FailStart(int number) { failAt_ = starts_ + number; }
    /// The most workers that ever decoded at the same time.
    int MostDecoding() const { return mostDecoding_; }

    /// From now on, or no longer, every wait that has an end ends at once, successful or not.
    void HurryWaits(bool hurry) { hurry_ = hurry; }
    /// The window thread's next wait lets the held-up workers go first.
    void LetGoAtWait() { letGoAtWait_ = true; }

private:
    using OpenPicture = FakedImport<"GdipCreateBitmapFromFile", int(const wchar_t*, void**)>;
    using Wait = FakedImport<"WaitForSingleObject", decltype(WaitForSingleObject)>;
    using Start = FakedImport<"CreateThread", decltype(CreateThread)>;

    void Pass(At place);
    int Decode(const wchar_t* path, void** bitmap);
    DWORD WaitFor(HANDLE handle, DWORD wait);

    const UniqueHandle heldUp_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    const UniqueHandle open_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<At> place_ = At::Nowhere;
    mutable std::vector<UniqueHandle> threads_;  ///< those that were inside when last looked at
    int starts_ = 0;
    int failAt_ = 0;
    std::atomic<int> workerWaits_ = 0;
    std::atomic<int> decoding_ = 0;
    std::atomic<int> mostDecoding_ = 0;
    std::atomic<bool> hurry_ = false;
    const DWORD windowThread_ = GetCurrentThreadId();
    bool letGoAtWait_ = false;

    OpenPicture openPicture_;
    Wait wait_;
    Start start_;
};
