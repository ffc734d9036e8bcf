#pragma once
// What the long tests share: how long they run, where their chance comes from, their host, and what
// stands between the library and Windows.

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <random>
#include <vector>

#include "support/import_table_win.h"
#include "support/map_host_win.h"
#include "support/photo_disk_win.h"
#include "support/worker_watch_win.h"
// shellapi.h needs windows.h before it.
#include <shellapi.h>

/// Whether HORIVO_FULL_RUN stands in the environment: the run is to last long.
inline const bool kIsFullRun = std::getenv("HORIVO_FULL_RUN") != nullptr;
/// HORIVO_SEED in the environment, else one from the clock. Printed, so that a failure can be
/// repeated.
std::uint64_t SeedOfRun();

/// Chance, for any thread.
class Dice {
public:
    std::uint64_t Number() { return std::mt19937_64(state_++)(); }
    /// 0 to `count` - 1.
    int Roll(int count) { return static_cast<int>((Number() >> 2) % static_cast<unsigned>(count)); }
    bool OneIn(int count) { return Roll(count) == 0; }
    template <class Value, std::size_t Count>
    const Value& Any(const Value (&values)[Count]) {
        return values[Roll(static_cast<int>(Count))];
    }

private:
    std::atomic<std::uint64_t> state_ = SeedOfRun();
};

/// What stands around a loaded library, from its loading to its end.
class WatchedLibrary {
    template <FunctionName Name, class Function>
    using Hook = FakedImport<Name, Function, WatchedLibrary>;

public:
    /// @param slow  whether workers dawdle at each step, and waits give up early
    WatchedLibrary(HMODULE module, Dice& dice, const std::atomic<bool>& slow);

    ImportLedger ledger;
    WorkerWatch workers;
    Hook<"MessageBoxW", decltype(MessageBoxW)> boxes;

private:
    /// Mostly no time at all, sometimes some milliseconds.
    void Dawdle() {
        if (slow_) Sleep(static_cast<DWORD>(dice_.OneIn(8) ? dice_.Roll(15) : 0));
    }
    DWORD WaitFor(HANDLE handle, DWORD wait);

    using Wait = Hook<"WaitForSingleObject", decltype(WaitForSingleObject)>;
    using Post = Hook<"PostMessageW", decltype(PostMessageW)>;

    Dice& dice_;
    const std::atomic<bool>& slow_;
    Hook<"ShellExecuteW", decltype(ShellExecuteW)> browser_;
    Wait wait_;
    Post post_;
};

/// A host with forty cities, photos of one of them, and a hidden window that is asked for them.
class LongRunTest : public MapHostTest {
protected:
    LongRunTest();
    ~LongRunTest() override;

    /// The picture and the settings of the tests, in an otherwise empty folder.
    static void PutFiles(int mapWidth);
    /// A map window; one that was refused says why.
    HWND Make(int width, int height);
    void DestroyAll() const;
    void Rest() const { EXPECT_TRUE(Settle(watched->workers)) << "a worker hangs"; }
    /// The host's answer when it is asked to let `window` show photos.
    virtual LRESULT Consent(HWND /*window*/) { return 1; }

    std::vector<CityRecord> sane;  ///< the cities; a test hands over a copy of them
    PhotoDisk photos;
    Dice dice;
    std::atomic<bool> slow = false;
    std::optional<WatchedLibrary> watched;

private:
    static inline LongRunTest* test_ = nullptr;
    HWND hidden_ = nullptr;
};
