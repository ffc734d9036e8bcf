#pragma once
// The loaded library as the random driver has it: watched, and slow where that is wanted.

#include <atomic>
#include <cstdio>
#include <thread>

#include "long_run.h"
#include "support/import_table_win.h"
#include "support/worker_watch_win.h"

/// Ends the program when nothing moves any more: a deadlock must not pass for patience.
class Watchdog {
public:
    Watchdog() = default;
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog() {
        over_ = true;
        thread_.join();
    }
    void Step(const char* what) {
        what_ = what;
        ++steps_;
    }
    int Steps() const { return steps_; }

private:
    void Watch() const {
        constexpr int kPatience = 3000;  // tenths of a second
        int seen = -1;
        for (int waited = 0; !over_ && waited < kPatience; ++waited) {
            if (seen != steps_) waited = 0;
            seen = steps_;
            Sleep(100);
        }
        if (over_) return;
        std::printf("DEADLOCK in step %d, %s\n", seen, what_.load());
        std::fflush(stdout);
        std::abort();
    }

    std::atomic<bool> over_ = false;
    std::atomic<int> steps_ = 0;
    std::atomic<const char*> what_ = "";
    std::thread thread_{[this] { Watch(); }};
};

/// What stands around a loaded library, from its loading to its end.
class WatchedLibrary {
public:
    /// @param slow  whether workers dawdle at each step, and waits give up early
    WatchedLibrary(HMODULE module, Dice& dice, const std::atomic<bool>& slow)
        : ledger(module),
          workers(module),
          dice_(dice),
          slow_(slow),
          box_(module, [](HWND, LPCWSTR, LPCWSTR, UINT) { return IDOK; }),
          browser_(module, [](auto...) { return HINSTANCE{}; }),
          cursor_(module,
                  [&dice](POINT* point) -> BOOL {
                      *point = {dice.Roll(200), dice.Roll(200)};
                      return TRUE;
                  }),
          lock_(module, [this](auto... arguments) { return mutex_ = Lock::Real(arguments...); }),
          wait_(module,
                [this](HANDLE handle, DWORD wait) {
                    Dawdle();
                    // Waits of minutes become moments, so that giving up is tried as well as
                    // waiting.
                    DWORD patience = wait;
                    if (slow_ && wait == kWorkerEndWaitMs)
                        patience = static_cast<DWORD>(dice_.Roll(200));
                    if (slow_ && wait < kWorkerEndWaitMs && dice_.OneIn(4))
                        patience = static_cast<DWORD>(dice_.Roll(20));
                    const DWORD result = Wait::Real(handle, patience);
                    Dawdle();
                    return result;
                }),
          release_(module,
                   [this](HANDLE mutex) {
                       const BOOL done = Release::Real(mutex);
                       Dawdle();
                       return done;
                   }),
          open_(module,
                [this](const wchar_t* path, void** bitmap) {
                    Dawdle();
                    return Open::Real(path, bitmap);
                }),
          post_(module, [this](auto... arguments) {
              const BOOL done = Post::Real(arguments...);
              Dawdle();
              return done;
          }) {}

    /// The library's lock since its last InitMap.
    HANDLE Mutex() const { return mutex_; }

    ImportLedger ledger;
    WorkerWatch workers;

private:
    template <FunctionName Name, class Function>
    using Hook = FakedImport<Name, Function, WatchedLibrary>;
    using Lock = Hook<"CreateMutexW", decltype(CreateMutexW)>;
    using Wait = Hook<"WaitForSingleObject", decltype(WaitForSingleObject)>;
    using Release = Hook<"ReleaseMutex", decltype(ReleaseMutex)>;
    using Open = Hook<"GdipCreateBitmapFromFile", int(const wchar_t*, void**)>;
    using Post = Hook<"PostMessageW", decltype(PostMessageW)>;

    /// Mostly not at all, sometimes for some milliseconds.
    void Dawdle() {
        if (!slow_) return;
        const int roll = dice_.Roll(8);
        if (roll < 3) Sleep(0);
        if (roll == 3) Sleep(static_cast<DWORD>(dice_.Roll(15)));
    }

    Dice& dice_;
    const std::atomic<bool>& slow_;
    HANDLE mutex_ = nullptr;
    Hook<"MessageBoxW", decltype(MessageBoxW)> box_;
    Hook<"ShellExecuteW", decltype(ShellExecuteW)> browser_;
    Hook<"GetCursorPos", decltype(GetCursorPos)> cursor_;
    Lock lock_;
    Wait wait_;
    Release release_;
    Open open_;
    Post post_;
};
