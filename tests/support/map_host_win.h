#pragma once
// A host for tests: loads the DLL, owns a top-level window, pumps messages, puts pictures into the
// data folder.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/windows_types.h"
#include "horivo_map.h"

class WorkerWatch;

/// The loaded DLL and its six functions.
struct MapLibrary {
    MapLibrary() { Load(); }
    MapLibrary(const MapLibrary&) = delete;
    MapLibrary& operator=(const MapLibrary&) = delete;
    ~MapLibrary() { Unload(); }
    void Load();
    void Unload();

    HMODULE module = nullptr;
    decltype(&::InitMap) InitMap = nullptr;
    decltype(&::SetLocalString) SetLocalString = nullptr;
    decltype(&::CreateMapWindow) CreateMapWindow = nullptr;
    decltype(&::InstallMap) InstallMap = nullptr;
    decltype(&::FreeMap) FreeMap = nullptr;
    decltype(&::GetLastSysError) GetLastSysError = nullptr;
};

/// What GetSystemTime answers to the library; a test moves it as it likes.
SYSTEMTIME& FixedClock();

/// Fixture: the loaded library and a host window. The library's clock stands at FixedClock(), and
/// every picture seems to take no time: a loaded machine must not lower the globe's detail in the
/// middle of a test. The data folder is emptied first; tests put what they need there.
class MapHostTest : public testing::Test {
public:
    static constexpr std::chrono::seconds kPatience{60};  // a loaded machine is slow, not wrong

    MapHostTest();
    ~MapHostTest() override;

    /// The data folder of the library.
    static std::filesystem::path DataFolder();
    static void EmptyDataFolder();
    /// Puts the project's map picture there.
    static void PutAssetMap();
    /// Writes a JPEG of a pattern with GDI+ (quality 100 where GDI+ heeds it).
    static void PutPatternMap(int width, int height);
    static void PutSettings(const std::string& text);
    static std::filesystem::path MapPath() { return DataFolder() / "map.jpg"; }

    /// Puts clock and spies between a library that was loaded anew and Windows.
    void Watch() const;
    /// Calls InitMap with `cities` as they are now.
    std::uint32_t Init();
    /// A map window inside the host window.
    HWND CreateMap(int width = 400, int height = 300);
    /// A map window with a small pattern on its globe, from an empty record on.
    HWND CreateTexturedMap(int pictureWidth = 256);
    /// Pumps messages until `done`; false when patience ended first.
    static bool PumpUntil(const std::function<bool()>& done);
    /// Pumps what is in the queue.
    static void PumpPending();
    /// Pumps until the planet of the (newest) window carries its tiles, by the spy's uploads.
    bool WaitForTiles(std::size_t uploads = 8);
    /// Pumps until all workers have left and none of their messages starts another; false when one
    /// stays.
    static bool Settle(const WorkerWatch& workers);
    /// Paints at once.
    static void Paint(HWND window);
    static void Key(HWND window, int key);

    MapLibrary library;
    std::vector<CityRecord> cities;
    HWND host = nullptr;
    std::string heard;                  ///< indices of the cities that the host window has heard of
    std::uint32_t status = 0xFFFFFFFF;  ///< of the last CreateMap

private:
    static LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};
