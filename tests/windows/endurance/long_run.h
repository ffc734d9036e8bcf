#pragma once
// What the long tests share: how long they run, where their chance comes from, and their host.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "support/map_host_win.h"
#include "support/photo_disk_win.h"
// shellapi.h needs windows.h before it.
#include <shellapi.h>

/// `full` when HORIVO_ENDURANCE in the environment is "full", else `brief`.
inline int LengthOfRun(int full, int brief) {
    const char* form = std::getenv("HORIVO_ENDURANCE");
    return form != nullptr && std::string_view(form) == "full" ? full : brief;
}

/// HORIVO_SEED in the environment, else one from the clock. Printed, so that a failure can be
/// repeated.
inline std::uint32_t SeedOfRun() {
    const char* wanted = std::getenv("HORIVO_SEED");
    const auto now = std::chrono::system_clock::now().time_since_epoch().count();
    const auto seed = static_cast<std::uint32_t>(
        wanted != nullptr ? std::strtoul(wanted, nullptr, 10) : static_cast<unsigned long>(now));
    std::printf("HORIVO_SEED=%u repeats this run\n", seed);
    std::fflush(stdout);
    return seed;
}

/// Chance, for any thread.
class Dice {
public:
    std::uint64_t Number() {
        std::uint64_t x = state_.fetch_add(0x9E3779B97F4A7C15);
        x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
        x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
        return x ^ (x >> 31);
    }
    /// 0 to `count` - 1.
    int Roll(int count) {
        return static_cast<int>((Number() >> 2) % static_cast<std::uint64_t>(count));
    }
    bool OneIn(int count) { return Roll(count) == 0; }
    template <class Value, std::size_t Count>
    const Value& Any(const Value (&values)[Count]) {
        return values[Roll(static_cast<int>(Count))];
    }

private:
    std::atomic<std::uint64_t> state_ = SeedOfRun();
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
    /// The host's answer when it is asked to let `window` show photos.
    virtual LRESULT Consent(HWND /*window*/) { return 1; }

    std::vector<CityRecord> sane;  ///< the cities; a test hands over a copy of them
    PhotoDisk photos;

private:
    static LRESULT CALLBACK HiddenProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    HWND hidden_ = nullptr;
};
