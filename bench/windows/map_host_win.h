#pragma once
// The least host that the library needs: a window, the map in it, a message loop.

#include <cstdint>
#include <vector>

#include "base/windows_types.h"
#include "horivo_map.h"

/// Runs the message loop until `map` has shown a frame with its tiles; false after a minute.
bool PumpUntilTextured(HWND map);

class BenchHost {
public:
    /// @param cities  must outlive the host; may be empty
    BenchHost(std::vector<CityRecord>& cities, int width, int height);
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;
    ~BenchHost();

    HWND Map() const { return map_; }
    /// Runs it until nothing has come for `quietMs`, at most three times as long.
    static void PumpUntilQuiet(DWORD quietMs);
    /// Paints one frame now.
    void Paint() const;

private:
    HWND host_ = nullptr;
    HWND map_ = nullptr;
};
