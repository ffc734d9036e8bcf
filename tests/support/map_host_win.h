#pragma once
// A host for tests: loads the DLL, owns a top-level window, pumps messages, puts pictures into the
// data folder.

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "horivo_map.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/worker_watch_win.h"
// shlobj.h needs windows.h before it.
#include <shlobj.h>

/// The loaded DLL and its six functions.
struct MapLibrary {
    struct Exported {
        template <class Function>
        // NOLINTNEXTLINE(google-explicit-constructor): what is found becomes what it is
        operator Function*() const {
            return reinterpret_cast<Function*>(address);
        }
        void* address;
    };
    Exported Find(const char* name) const {
        return {reinterpret_cast<void*>(GetProcAddress(module, name))};
    }
    void Load() { *this = MapLibrary(); }
    void Unload() { FreeLibrary(std::exchange(module, nullptr)); }

    HMODULE module = LoadLibraryW(L"horivo_map.dll");
    decltype(&::InitMap) InitMap = Find("InitMap");
    decltype(&::SetLocalString) SetLocalString = Find("SetLocalString");
    decltype(&::CreateMapWindow) CreateMapWindow = Find("CreateMapWindow");
    decltype(&::InstallMap) InstallMap = Find("InstallMap");
    decltype(&::FreeMap) FreeMap = Find("FreeMap");
    decltype(&::GetLastSysError) GetLastSysError = Find("GetLastSysError");
};

/// What GetSystemTime answers to the library; a test moves it as it likes.
inline SYSTEMTIME& FixedClock() {
    static SYSTEMTIME time = {2026, 3, 5, 20, 12, 0, 0, 0};
    return time;
}

/// Fixture: the loaded library and a host window. The library's clock stands at FixedClock(), and
/// every picture seems to take no time: a loaded machine must not lower the globe's detail in the
/// middle of a test. The data folder is emptied first; tests put what they need there.
class MapHostTest : public testing::Test {
public:
    static constexpr std::chrono::seconds kPatience{60};  // a loaded machine is slow, not wrong

    MapHostTest() {
        SpiedGl() = {};
        EmptyDataFolder();
        Watch();
        ShowWindow(host, SW_SHOWNA);
    }
    ~MapHostTest() override {
        DestroyWindow(host);
        if (library.module == nullptr) return;
        library.FreeMap();
        library.Unload();
    }

    /// The data folder of the library.
    static std::filesystem::path DataFolder() {
        wchar_t folder[MAX_PATH] = {};
        SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, 0, folder);
        return std::filesystem::path(folder) / L"Zelmo" / L"Horivo";
    }
    static std::filesystem::path MapPath() { return DataFolder() / "map.jpg"; }
    static void EmptyDataFolder() {
        std::filesystem::remove_all(DataFolder());
        std::filesystem::create_directories(DataFolder());
    }
    /// Writes a JPEG of a pattern with GDI+ (quality 100 where GDI+ heeds it).
    static void PutPatternMap(int w, int h) { SavePatternJpeg(MapPath(), w, h, 100); }
    static void PutSettings(const std::string& text) {
        std::ofstream(DataFolder() / "horivo.ini") << "[map]\r\n" << text;
    }

    /// Puts clock and spies between a library that was loaded anew and Windows.
    void Watch() const {
        SpyOnGl(library.module);
        ReplaceImport(library.module, "GetSystemTime", reinterpret_cast<void*>(&TellFixedTime));
        ReplaceImport(library.module, "GetTickCount", reinterpret_cast<void*>(&TellNextTick));
    }
    /// Calls InitMap with `cities` as they are now.
    std::uint32_t Init() {
        return library.InitMap(cities.data(), static_cast<std::int32_t>(cities.size()));
    }
    /// A map window inside the host window.
    HWND CreateMap(int width = 400, int height = 300) {
        return library.CreateMapWindow(host, 0, 0, width, height, &status);
    }
    /// A map window with a small pattern on its globe, from an empty record on.
    HWND CreateTexturedMap() {
        PutPatternMap(256, 128);
        Init();
        const HWND map = CreateMap();
        // The compile that follows the last upload belongs to the same message.
        EXPECT_TRUE(WaitForTiles());
        return map;
    }
    /// Pumps messages until `done`; false when patience ended first.
    static bool PumpUntil(const std::function<bool()>& done) {
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (!done()) {
            if (std::chrono::steady_clock::now() > end) return false;
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
            PumpPending();
        }
        return true;
    }
    /// Pumps what is in the queue.
    static void PumpPending() {
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    }
    /// Pumps until the planet of the (newest) window carries its tiles, by the spy's uploads.
    bool WaitForTiles(std::size_t uploads = 8) {
        return PumpUntil([=] { return SpiedGl().uploads.size() >= uploads; });
    }
    /// Pumps until all workers have left and none of their messages starts another; false when one
    /// stays.
    static bool Settle(const WorkerWatch& workers) {
        for (int started = -1; started != workers.started; PumpPending()) {
            started = workers.started;
            if (!PumpUntil([&] { return workers.Inside() == 0; })) return false;
        }
        return true;
    }
    /// Paints at once.
    static void Paint(HWND window) {
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);
    }
    static void Key(HWND window, int key) {
        SendMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
    }

    MapLibrary library;
    std::vector<CityRecord> cities;
    std::uint32_t status = 0xFFFFFFFF;  ///< of the last CreateMap
    // Wine: without a window manager a window that one would frame, or an active one, takes two
    // seconds to go.
    const HWND host = CreateWindowW(L"static", L"host", WS_POPUP, 20, 20, 900, 700, nullptr,
                                    nullptr, nullptr, nullptr);

private:
    static void WINAPI TellFixedTime(SYSTEMTIME* time) { *time = FixedClock(); }
    static DWORD WINAPI TellNextTick() {
        static DWORD tick = 0;
        return ++tick;
    }
};
