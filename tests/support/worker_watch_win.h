#pragma once
// The DLL's worker threads: where they are, how long they take, when they have left.

#include <algorithm>
#include <atomic>
#include <utility>
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

    explicit WorkerWatch(HMODULE module)
        : openPicture_(module, [this](auto... arguments) { return Decode(arguments...); }),
          wait_(module, [this](HANDLE handle, DWORD wait) { return WaitFor(handle, wait); }),
          start_(module, [this](auto... arguments) { return StartThread(arguments...); }) {}
    /// Lets all go and waits for them.
    ~WorkerWatch() {
        LetGo();
        while (Inside() > 0) Sleep(1);
    }

    void HoldUp(int place) {
        ResetEvent(open_.get());
        ResetEvent(heldUp_.get());
        workerWaits_ = 0;
        place_ = place;
    }
    void LetGo() {
        place_ = kNowhere;
        SetEvent(open_.get());
    }
    /// Whether a worker stands at the place.
    bool IsHeldUp() const { return WaitForSingleObject(heldUp_.get(), 0) == WAIT_OBJECT_0; }
    /// Workers that have not left yet.
    int Inside() const {
        // Long runs count handles: those of threads that have ended must not pile up here.
        std::erase_if(threads_, [](const UniqueHandle& thread) {
            return WaitForSingleObject(thread.get(), 0) == WAIT_OBJECT_0;
        });
        return static_cast<int>(threads_.size());
    }
    int started = 0;                    ///< workers that the module tried to start
    int failingStart = 0;               ///< which of the next starts fails; 1 is the next
    std::atomic<int> mostDecoding = 0;  ///< workers that ever decoded at the same time
    std::atomic<int> waits = kPatient;
    bool letGoAtWait = false;  ///< the window thread's next wait lets the held-up workers go first

private:
    void Pass(int place) {
        if (place_ != place) return;
        SetEvent(heldUp_.get());
        WaitForSingleObject(open_.get(), 60000);
    }
    int Decode(const wchar_t* path, void** bitmap) {
        const bool map = std::wstring_view(path).ends_with(L"map.jpg");
        if (map) mostDecoding = std::max<int>(mostDecoding, ++decoding_);
        if (map) Pass(kDecode);
        const int status = decltype(openPicture_)::Real(path, bitmap);
        if (map) --decoding_;
        return status;
    }
    DWORD WaitFor(HANDLE handle, DWORD wait) {
        // Waits without an end are those of the C++ runtime, which counts on them.
        if (wait == INFINITE) return decltype(wait_)::Real(handle, wait);
        if (GetCurrentThreadId() == windowThread_) {
            if (std::exchange(letGoAtWait, false)) LetGo();
        } else {
            const int number = ++workerWaits_;
            if (number <= 2) Pass(number == 1 ? kLoadLock : kSplitLock);
        }
        if (waits == kVain) return WAIT_TIMEOUT;
        const DWORD result = decltype(wait_)::Real(handle, waits == kPatient ? wait : 0);
        return waits == kOrphaned && result == WAIT_OBJECT_0 ? WAIT_ABANDONED : result;
    }
    template <class... Arguments>
    HANDLE StartThread(Arguments... arguments) {
        ++started;
        if (failingStart > 0 && --failingStart == 0) return nullptr;
        HANDLE thread = decltype(start_)::Real(arguments...);
        threads_.push_back(DuplicateOf(thread));
        return thread;
    }

    const UniqueHandle heldUp_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    const UniqueHandle open_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};
    std::atomic<int> place_ = kNowhere;
    mutable std::vector<UniqueHandle> threads_;  ///< those that were inside when last looked at
    std::atomic<int> workerWaits_ = 0;
    std::atomic<int> decoding_ = 0;
    const DWORD windowThread_ = GetCurrentThreadId();
    FakedImport<"GdipCreateBitmapFromFile", int(const wchar_t*, void**)> openPicture_;
    FakedImport<"WaitForSingleObject", decltype(WaitForSingleObject)> wait_;
    FakedImport<"CreateThread", decltype(CreateThread)> start_;
};
