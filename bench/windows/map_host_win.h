#pragma once
// The least host that the library needs: a window, the map in it, a message loop.

#include <cstdint>
#include <vector>

#include "base/windows_types.h"
#include "horivo_map.h"

/// Runs the message loop until `map` has shown a frame with its tiles; false when no message comes
/// for a minute.
bool PumpUntilTextured(HWND map);

class BenchHost {
public:
    /// @param cities  must outlive the host; may be empty
    BenchHost(std::vector<CityRecord>& cities, int width, int height);
    BenchHost(const BenchHost&) = delete;
    BenchHost& operator=(const BenchHost&) = delete;
    ~BenchHost();

    HWND Map() const { return map_; }
    /// Runs the message loop until no message has come for `quietMs` milliseconds, but at most for
    /// about three times this time.
    static void PumpUntilQuiet(DWORD quietMs);
    /// Paints one frame now.
    void Paint() const;

private:
    HWND host_ = nullptr;
    HWND map_ = nullptr;
};
